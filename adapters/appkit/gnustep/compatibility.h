// Declarations of macOS's headers that GNUstep lacks.
#pragma once

#include <cstdint>

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

using Boolean = unsigned char;
using OSStatus = std::int32_t;
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;  // NOLINT(bugprone-reserved-identifier)

/// The settings of one print job. On GNUstep the handle points to an NSMutableDictionary.
using PMPrintSettings = struct OpaquePMPrintSettings*;

enum : OSStatus {
  kPMNoError = 0,
  kPMInvalidParameter = -50,
  kPMKeyOrValueNotFound = -9623,
  kPMInvalidPrintSettings = -30875,
};

extern "C" {
OSStatus PMPrintSettingsGetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef* value);
OSStatus PMPrintSettingsSetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef value,
                                 Boolean locked);
}

struct ppd_file_s;

/// The part of the host that a panel uses.
@protocol PDEPlugInCallbackProtocol
- (PMPrintSettings)printSettings;
- (struct ppd_file_s*)ppdFile;
@end

/// As macOS before 13 declares it. Later versions still accept this initialiser from a class that does not
/// declare the protocol.
@protocol PDEPlugIn
- (BOOL)initWithBundle:(NSBundle*)bundle;
- (NSArray*)PDEPanelsForType:(NSString*)type withHostInfo:(id)host;
@end

@protocol PDEPanel
- (NSString*)panelName;
- (NSString*)panelKind;
- (NSView*)panelView;
- (NSDictionary*)summaryInfo;
- (void)willShow;
- (BOOL)shouldHide;
- (BOOL)shouldShowHelp;
- (NSArray*)supportedPPDOptionKeys;
- (BOOL)shouldPrint;
- (BOOL)saveValuesAndReturnError:(NSError**)error;
- (BOOL)restoreValuesAndReturnError:(NSError**)error;
@end

/// As in macOS's NSUserInterfaceItemIdentification.
@interface NSControl (Identifier)
- (NSString*)identifier;
- (void)setIdentifier:(NSString*)identifier;
@end

constexpr auto NSButtonTypeSwitch = NSSwitchButton;
constexpr auto NSButtonTypeMomentaryPushIn = NSMomentaryPushInButton;
constexpr auto NSBezelStyleRounded = NSRoundedBezelStyle;
constexpr auto NSBezelStyleRegularSquare = NSRegularSquareBezelStyle;
