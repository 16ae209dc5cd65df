#import "adapters/appkit/plugin.h"

#include "adapters/appkit/foundation/bundle.hpp"
#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/host_callback.hpp"
#include "adapters/appkit/foundation/raise.hpp"
#import "adapters/appkit/panel.h"
#include "plugin/plugin.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

namespace {

// The core's list as the toolkit's objects; nil for null.
NSArray* listOf(std::unique_ptr<platform::PanelList> panels) {
  if (!panels) return nil;
  NSMutableArray* list = [NSMutableArray arrayWithCapacity:panels->size()];
  for (auto& panel : *panels) {
    auto core = std::static_pointer_cast<tandemtrim::MorvaTTPdePanelKV2>(
        std::shared_ptr<platform::PrintPanel>(std::move(panel)));
    MorvaTTPdePanelKV2* made = [[MorvaTTPdePanelKV2 alloc] initWithCore:std::move(core)];
    [list addObject:made];
    [made release];
  }
  return list;
}

}  // namespace

@implementation MorvaTTPdePluginKV2

- (BOOL)initWithBundle:(NSBundle*)bundle {
  if (bundle == nil) return NO;
  [bundle retain];
  [bundle_ release];
  bundle_ = bundle;
  return YES;
}

- (void)dealloc {
  [bundle_ release];
  [super dealloc];
}

- (NSArray*)PDEPanelsForType:(NSString*)type withHostInfo:(id)host {
  return appkit::guarded([&] {
    tandemtrim::MorvaTTPdePluginKV2 core;
    core.initWithBundle(appkit::bundleOf(bundle_));
    return listOf(core.PDEPanelsForType(appkit::textOf(type), appkit::hostCallbackOf(host)));
  });
}

- (NSBundle*)bundle {
  return bundle_;
}

@end
