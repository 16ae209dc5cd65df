// What macOS's headers declare and GNUstep's do not, in macOS's words.
#pragma once

#include <cstdint>

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

using Boolean = unsigned char;
using OSStatus = std::int32_t;
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;  // NOLINT(bugprone-reserved-identifier)

/// The settings of one print job. On GNUstep an NSMutableDictionary stands behind the handle.
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

/// The host, as far as a panel asks it anything.
@protocol PDEPlugInCallbackProtocol
- (PMPrintSettings)printSettings;
- (struct ppd_file_s*)ppdFile;
@end

/// As macOS knew it before 13 and still takes it from a class that does not declare the protocol.
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

/// As macOS's NSUserInterfaceItemIdentification has it.
@interface NSControl (Identifier)
- (NSString*)identifier;
- (void)setIdentifier:(NSString*)identifier;
@end

constexpr auto NSButtonTypeSwitch = NSSwitchButton;
constexpr auto NSButtonTypeMomentaryPushIn = NSMomentaryPushInButton;
constexpr auto NSBezelStyleRounded = NSRoundedBezelStyle;
constexpr auto NSBezelStyleRegularSquare = NSRegularSquareBezelStyle;
