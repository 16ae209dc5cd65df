#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "plugin/setting_info/common_info.hpp"

@class MorvaTTMarginInfoKV2;

/// The declared type of the host's callback object. The object itself is the host's, of a class of its own.
@interface MorvaTTPdeCallbackKV2 : NSObject
@end

/// The setting information for a host and for the panel's other objects: the core's answers as Foundation's
/// objects. What comes from the property list is the very object that was read, nil where the list lacks it.
@interface MorvaTTCommonInfoKV2 : NSObject {
  std::shared_ptr<tandemtrim::MorvaTTCommonInfoKV2> core_;
  NSDictionary* settingInfoDictionary_;
  MorvaTTMarginInfoKV2* marginInfoDictionary_;
}
/// Nil when an argument or a readable property list is missing.
- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle;
/// Nil for none.
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
/// The stored limits, not a copy: marginLimit: answers what a caller changes here.
- (NSMutableDictionary*)marginInfoDictionary;
- (NSBundle*)bundle;
- (id)callback;
@end
