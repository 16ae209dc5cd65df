// A host like macOS's print dialog. It knows the plug-in only by its documentation and includes nothing of
// the project.
#pragma once

#include <cups/ppd.h>

#import "tests/adapters/appkit/support/print_session.h"

/// The operations of a plug-in's principal class.
@protocol HostedPlugin
- (BOOL)initWithBundle:(NSBundle*)bundle;
- (NSArray*)PDEPanelsForType:(NSString*)type withHostInfo:(id)host;
- (NSBundle*)bundle;
@end

/// The operations of a panel.
@protocol HostedPanel
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
- (id)viewController;
- (id)commonInfo;
@end

/// The host of one job: the print settings of a session, and the printer's PPD file.
@interface TestHost : NSObject {
  PMPrintSession session_;
  PMPrintSettings settings_;
  ppd_file_t* ppd_;
}
/// Without a path the printer has no PPD file.
- (id)initWithPPD:(NSString*)path;
#if defined(GNUSTEP)
/// The job's print settings, which are a dictionary here.
- (NSMutableDictionary*)settings;
/// Gives the job new print settings with the same values; returns the former ones, which it no longer uses.
- (NSDictionary*)replaceSettings;
#endif
// Called by the plug-in.
- (PMPrintSettings)printSettings;
- (ppd_file_t*)ppdFile;
@end

/// A host without print settings.
@interface TestHostWithoutSettings : TestHost
@end

namespace host {

extern NSString* const kPrintDialogType;

/// Starts the application once, with the appearance that its pictures need.
void startApplication();

/// A bundle in macOS's form. GNUstep reads it through a new folder of links in `scratch`, where each call
/// returns a separate bundle.
NSBundle* openBundle(NSString* path, NSString* scratch);

/// The bundle of the plug-in under test; the environment variable TANDEM_TRIM_BUNDLE is its path.
NSBundle* pluginBundle();
/// A new plug-in object of that bundle's principal class; the caller releases it.
id<HostedPlugin> newPlugin();

/// A window that shows a view alone, in front and with the keyboard. The caller closes it.
NSWindow* showInWindow(NSView* view);
/// Lets the application handle the events that have arrived.
void handleEvents();

}  // namespace host
