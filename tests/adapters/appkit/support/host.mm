#import "tests/adapters/appkit/support/host.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

@implementation TestHost

- (id)initWithPPD:(NSString*)path {
  self = [super init];
  if (PMCreateSession(&session_) != kPMNoError || PMCreatePrintSettings(&settings_) != kPMNoError ||
      PMSessionDefaultPrintSettings(session_, settings_) != kPMNoError)
    throw std::runtime_error("the print system makes no settings for a job");
  if (path != nil) ppd_ = ppdOpenFile([path fileSystemRepresentation]);
  return self;
}

- (void)dealloc {
  if (ppd_ != nullptr) ppdClose(ppd_);
  PMRelease(settings_);
  PMRelease(session_);
  [super dealloc];
}

#if defined(GNUSTEP)
- (NSMutableDictionary*)settings {
  return reinterpret_cast<NSMutableDictionary*>(settings_);
}

- (NSDictionary*)replaceSettings {
  NSMutableDictionary* const former = [self settings];
  settings_ = reinterpret_cast<PMPrintSettings>([former mutableCopy]);
  return [former autorelease];
}
#endif

- (PMPrintSettings)printSettings {
  return settings_;
}

- (ppd_file_t*)ppdFile {
  return ppd_;
}

@end

@implementation TestHostWithoutSettings

- (PMPrintSettings)printSettings {
  return nullptr;
}

@end

namespace host {

NSString* const kPrintDialogType = @"BDB091F4-E57F-11D3-B5CC-0050E4603277";

namespace {

// By default, the toolkit shows an uncaught exception in a panel and waits until a user closes it.
void endWithReason(NSException* exception) {
  std::cerr << [[exception name] UTF8String] << ": " << [[exception reason] UTF8String] << std::endl;
  std::abort();
}

#if defined(GNUSTEP)
// The toolkit starts this server, which the application needs, and raises if it does not answer within ten
// seconds. A busy machine takes longer.
void awaitNotificationServer() {
  constexpr int kTries = 12;
  for (int count = 0; count < kTries; ++count) {
    @try {
      return [[NSDistributedNotificationCenter defaultCenter] postNotificationName:@"TestHost" object:nil];
    } @catch (NSException* exception) {
      std::cerr << [[exception reason] UTF8String] << std::endl;
    }
  }
}
#endif

}  // namespace

void startApplication() {
  if (NSApp != nil) return;
#if defined(GNUSTEP)
  NSString* const grey = @"0.93 0.93 0.93";
  [[NSUserDefaults standardUserDefaults] registerDefaults:@{
    @"GSBackHandlesWindowDecorations" : @"NO",
    @"GSSuppressAppIcon" : @"YES",
    @"windowBackgroundColor" : grey,
    @"controlColor" : grey,
    @"controlBackgroundColor" : grey
  }];
#endif
  [NSApplication sharedApplication];
  NSSetUncaughtExceptionHandler(endWithReason);
#if defined(GNUSTEP)
  awaitNotificationServer();
#endif
  [NSApp finishLaunching];
}

#if defined(GNUSTEP)
// The toolkit keeps one bundle for each path and identifier, so each call makes a new path and identifier.
NSBundle* openBundle(NSString* path, NSString* scratch) {
  NSFileManager* files = [NSFileManager defaultManager];
  NSString* identity = [[NSProcessInfo processInfo] globallyUniqueString];
  NSString* contents = [path stringByAppendingPathComponent:@"Contents"];
  NSString* opened = [[scratch stringByAppendingPathComponent:identity]
      stringByAppendingPathComponent:[path lastPathComponent]];
  [files createDirectoryAtPath:opened withIntermediateDirectories:YES attributes:nil error:nullptr];
  for (NSString* part in @[ @"Resources", @"MacOS/TandemTrim" ]) {
    [files createSymbolicLinkAtPath:[opened stringByAppendingPathComponent:[part lastPathComponent]]
                withDestinationPath:[contents stringByAppendingPathComponent:part]
                              error:nullptr];
  }
  NSMutableDictionary* info = [NSMutableDictionary
      dictionaryWithContentsOfFile:[contents stringByAppendingPathComponent:@"Info.plist"]];
  [info setObject:identity forKey:@"CFBundleIdentifier"];
  [info writeToFile:[opened stringByAppendingPathComponent:@"Info.plist"] atomically:NO];
  return [NSBundle bundleWithPath:opened];
}
#else
NSBundle* openBundle(NSString* path, NSString* /*scratch*/) { return [NSBundle bundleWithPath:path]; }
#endif

NSBundle* pluginBundle() {
  const char* path = std::getenv("TANDEM_TRIM_BUNDLE");
  if (path == nullptr) throw std::runtime_error("TANDEM_TRIM_BUNDLE names no bundle");
  static NSBundle* const bundle =
      [openBundle([NSString stringWithUTF8String:path], NSTemporaryDirectory()) retain];
  return bundle;
}

id<HostedPlugin> newPlugin() {
  startApplication();
  id<HostedPlugin> plugin = [[pluginBundle() principalClass] alloc];
  if (plugin == nil) throw std::runtime_error("the bundle has no principal class");
  return plugin;
}

NSWindow* showInWindow(NSView* view) {
  NSWindow* window = [[NSWindow alloc] initWithContentRect:[view frame]
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  [window setReleasedWhenClosed:YES];
  [[window contentView] addSubview:view];
  [view setFrameOrigin:NSZeroPoint];
  [window setFrameTopLeftPoint:NSMakePoint(100, 700)];
  [window makeKeyAndOrderFront:nil];
  handleEvents();
  return window;
}

void handleEvents() {
  while (NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                             untilDate:[NSDate distantPast]
                                                inMode:NSDefaultRunLoopMode
                                               dequeue:YES]) {
    [NSApp sendEvent:event];
  }
  // Clears the insertion points' timers, which nothing else removes.
  for (NSString* mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ])
    [[NSRunLoop currentRunLoop] limitDateForMode:mode];
}

}  // namespace host
