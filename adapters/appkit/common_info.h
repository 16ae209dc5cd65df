#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "plugin/setting_info/common_info.hpp"

@class MorvaTTMarginInfoKV2;

/// The declared type of the host's callback object; the object itself is of a class of the host.
@interface MorvaTTPdeCallbackKV2 : NSObject
@end

/// The setting information for a host and for the panel's other objects: the core's values as Foundation's
/// objects. A value of the property list is the very object that was read, nil if the list lacks it.
@interface MorvaTTCommonInfoKV2 : NSObject {
  std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2> core_;
  NSDictionary* settingInfoDictionary_;
  MorvaTTMarginInfoKV2* marginInfoDictionary_;
}
/// Nil when an argument or a readable property list is missing.
- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle;
/// Nil if `core` is null.
- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2>)core;
- (std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2>)core;

- (NSString*)localizedString:(NSString*)key;
- (id)defaultValid;
- (id)defaultImageDirection;
- (id)defaultPosition;
- (id)defaultMarginValue:(NSString*)marginName;
- (id)defaultMarginMin;
- (id)defaultMarginMax;
- (id)defaultMarginLimit;
- (id)marginLimit:(NSString*)marginName;
- (id)panelKindID;
- (id)ticketKeyValid;
- (id)ticketKeyImageDirection;
- (id)ticketKeyPosition;
- (id)ticketKeyMargin:(NSString*)marginName;
- (id)minLabelForIntegerValueRange;
- (id)maxLabelForIntegerValueRange;
- (PMPrintSettings)currentPrintSettings;
- (BOOL)isReady;

- (NSDictionary*)settingInfoDictionary;
/// The stored limits, not a copy: if the caller changes a limit here, marginLimit: returns the new value.
- (NSMutableDictionary*)marginInfoDictionary;
- (NSBundle*)bundle;
- (id)callback;
@end
