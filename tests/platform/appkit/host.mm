#import "tests/platform/appkit/host.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

@implementation TestHost

- (id)initWithPPD:(NSString*)path {
  self = [super init];
  settings_ = [[NSMutableDictionary alloc] init];
  if (path != nil) ppd_ = ppdOpenFile([path fileSystemRepresentation]);
  return self;
}

- (void)dealloc {
  if (ppd_ != nullptr) ppdClose(ppd_);
  [settings_ release];
  [super dealloc];
}

- (NSMutableDictionary*)settings {
  return settings_;
}

- (PMPrintSettings)printSettings {
  return reinterpret_cast<PMPrintSettings>(settings_);
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

void startApplication() {
  if (NSApp != nil) return;
  NSString* const grey = @"0.93 0.93 0.93";
  [[NSUserDefaults standardUserDefaults] registerDefaults:@{
    @"GSBackHandlesWindowDecorations" : @"NO",
    @"GSSuppressAppIcon" : @"YES",
    @"windowBackgroundColor" : grey,
    @"controlColor" : grey,
    @"controlBackgroundColor" : grey
  }];
  [[NSApplication sharedApplication] finishLaunching];
}

NSBundle* openBundle(NSString* path, NSString* scratch) {
  NSFileManager* files = [NSFileManager defaultManager];
  // A bundle is remembered by its path, so each gets one of its own.
  static int opened = 0;
  NSString* links =
      [NSString stringWithFormat:@"%@/opened-%d/%@", scratch, ++opened, [path lastPathComponent]];
  [files createDirectoryAtPath:links withIntermediateDirectories:YES attributes:nil error:nullptr];
  for (NSString* part in @[ @"Contents/Resources", @"Contents/Info.plist", @"Contents/MacOS/TandemTrim" ]) {
    [files createSymbolicLinkAtPath:[links stringByAppendingPathComponent:[part lastPathComponent]]
                withDestinationPath:[path stringByAppendingPathComponent:part]
                              error:nullptr];
  }
  return [NSBundle bundleWithPath:links];
}

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
  // The insertion points' timers, which are otherwise never cleared away.
  for (NSString* mode in @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ])
    [[NSRunLoop currentRunLoop] limitDateForMode:mode];
}

}  // namespace host
