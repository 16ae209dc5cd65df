#import "adapters/appkit/panel.h"

#include "adapters/appkit/foundation/bundle.hpp"
#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/host_callback.hpp"
#include "adapters/appkit/foundation/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;

@implementation MorvaTTPdePanelKV2

- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle {
  return
      [self initWithCore:appkit::guardedInit(self, [&]() -> std::shared_ptr<tandemtrim::MorvaTTPdePanelKV2> {
              return tandemtrim::MorvaTTPdePanelKV2::initWithCallback(appkit::hostCallbackOf(callback),
                                                                      appkit::bundleOf(bundle));
            })];
}

- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTPdePanelKV2>)core {
  self = [super init];
  if (self == nil || !core) {
    [self release];
    return nil;
  }
  core_ = std::move(core);
  appkit::guardedInit(self, [&] {
    commonInfo_ = [[MorvaTTCommonInfoKV2 alloc] initWithCore:core_->commonInfo()];
    // The pointer to the core's controller shares the ownership of the core's panel, which owns the
    // controller.
    viewController_ = [[MorvaTTViewControllerKV2 alloc] initWithCore:{core_, core_->viewController()}
                                                          commonInfo:commonInfo_];
  });
  return self;
}

// Releases its reference to the core first, so that the controller has the last one and can still
// unsubscribe.
- (void)dealloc {
  core_.reset();
  [viewController_ release];
  [commonInfo_ release];
  [supportedOptions_ release];
  [super dealloc];
}

- (NSString*)panelName {
  return appkit::guarded([&] { return appkit::stringOf(core_->panelName()); });
}

- (id)panelKind {
  return appkit::guarded([&] { return appkit::foundationObjectOf(core_->panelKind()); });
}

- (NSView*)panelView {
  return appkit::guarded([&] { return appkit::toolkitObjectOf(core_->panelView()); });
}

- (NSDictionary*)summaryInfo {
  return appkit::guarded([&] { return appkit::foundationDictionaryOf(core_->summaryInfo()); });
}

- (void)willShow {
  appkit::guarded([&] { core_->willShow(); });
}

- (BOOL)shouldHide {
  return core_->shouldHide();
}

- (BOOL)shouldShowHelp {
  return core_->shouldShowHelp();
}

- (NSArray*)supportedPPDOptionKeys {
  return appkit::guarded([&] {
    const auto& keys = core_->supportedPPDOptionKeys();
    if (supportedOptions_ == nil) {
      supportedOptions_ = [[NSMutableArray alloc] initWithCapacity:keys.size()];
      for (const auto& key : keys) [supportedOptions_ addObject:appkit::stringOf(key)];
    }
    return supportedOptions_;
  });
}

- (BOOL)shouldPrint {
  return core_->shouldPrint();
}

- (BOOL)saveValuesAndReturnError:(NSError**)error {
  (void)error;
  return appkit::guarded([&] { return core_->saveValuesAndReturnError(nullptr); });
}

- (BOOL)restoreValuesAndReturnError:(NSError**)error {
  (void)error;
  return appkit::guarded([&] { return core_->restoreValuesAndReturnError(nullptr); });
}

- (MorvaTTViewControllerKV2*)viewController {
  return viewController_;
}

- (MorvaTTCommonInfoKV2*)commonInfo {
  return commonInfo_;
}

@end
