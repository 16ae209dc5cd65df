#import "platform/appkit/common_info.h"

#include "platform/appkit/bundle.hpp"
#include "platform/appkit/foundation.hpp"
#include "platform/appkit/host_callback.hpp"
#include "platform/appkit/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

namespace {

// Gives the margins' limits number objects that stay the same: those that were read from the PPD have none
// yet.
void keepNumberObjects(platform::Dictionary& marginInfo) {
  for (auto& [name, entry] : marginInfo) entry = appkit::objectOf(appkit::foundationObjectOf(entry));
}

}  // namespace

// An accessor of the core's that gives an object.
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
  return [self initWithCore:appkit::guarded([&] {
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
  appkit::guarded([&] {
    settingInfoDictionary_ = [appkit::foundationDictionaryOf(*core_->settingInfoDictionary()) copy];
    keepNumberObjects(core_->marginInfoDictionary());
    marginInfoDictionary_ = [appkit::foundationDictionaryOf(core_->marginInfoDictionary()) retain];
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
