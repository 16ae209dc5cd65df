#import "adapters/appkit/common_info.h"

#include "adapters/appkit/foundation/bundle.hpp"
#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/host_callback.hpp"
#import "adapters/appkit/foundation/margin_info.h"
#include "adapters/appkit/foundation/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;

// An accessor of the core that returns an object.
#define OBJECT_ACCESSOR(name)                                                          \
  -(id)name {                                                                          \
    return appkit::guarded([&] { return appkit::foundationObjectOf(core_->name()); }); \
  }

#define MARGIN_OBJECT_ACCESSOR(name)                                                          \
  -(id)name : (NSString*)marginName {                                                         \
    return appkit::guarded(                                                                   \
        [&] { return appkit::foundationObjectOf(core_->name(appkit::textOf(marginName))); }); \
  }

@implementation MorvaTTPdeCallbackKV2
@end

@implementation MorvaTTCommonInfoKV2

- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle {
  return [self initWithCore:appkit::guardedInit(self, [&] {
                 return tandemtrim::MorvaTTCommonInfoKV2::initWithCallback(appkit::hostCallbackOf(callback),
                                                                           appkit::bundleOf(bundle));
               })];
}

- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2>)core {
  self = [super init];
  if (self == nil || !core) {
    [self release];
    return nil;
  }
  core_ = std::move(core);
  appkit::guardedInit(self, [&] {
    settingInfoDictionary_ = [appkit::foundationDictionaryOf(*core_->settingInfoDictionary()) copy];
    marginInfoDictionary_ =
        [[MorvaTTMarginInfoKV2 alloc] initWithCore:{core_, &core_->marginInfoDictionary()}];
  });
  return self;
}

- (void)dealloc {
  [settingInfoDictionary_ release];
  [marginInfoDictionary_ release];
  core_.reset();
  [super dealloc];
}

- (std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2>)core {
  return core_;
}

- (NSString*)localizedString:(NSString*)key {
  return appkit::guarded([&] { return appkit::stringOf(core_->localizedString(appkit::textOf(key))); });
}

OBJECT_ACCESSOR(defaultValid)
OBJECT_ACCESSOR(defaultImageDirection)
OBJECT_ACCESSOR(defaultPosition)
MARGIN_OBJECT_ACCESSOR(defaultMarginValue)
OBJECT_ACCESSOR(defaultMarginMin)
OBJECT_ACCESSOR(defaultMarginMax)
OBJECT_ACCESSOR(defaultMarginLimit)
MARGIN_OBJECT_ACCESSOR(marginLimit)
OBJECT_ACCESSOR(panelKindID)
OBJECT_ACCESSOR(ticketKeyValid)
OBJECT_ACCESSOR(ticketKeyImageDirection)
OBJECT_ACCESSOR(ticketKeyPosition)
MARGIN_OBJECT_ACCESSOR(ticketKeyMargin)
OBJECT_ACCESSOR(minLabelForIntegerValueRange)
OBJECT_ACCESSOR(maxLabelForIntegerValueRange)

- (PMPrintSettings)currentPrintSettings {
  return appkit::guarded([&] { return appkit::handleOf(core_->currentPrintSettings()); });
}

- (BOOL)isReady {
  return core_->isReady();
}

- (NSDictionary*)settingInfoDictionary {
  return settingInfoDictionary_;
}

- (NSMutableDictionary*)marginInfoDictionary {
  return marginInfoDictionary_;
}

- (NSBundle*)bundle {
  return appkit::toolkitBundleOf(core_->bundle());
}

- (id)callback {
  return appkit::hostOf(core_->callback());
}

@end
