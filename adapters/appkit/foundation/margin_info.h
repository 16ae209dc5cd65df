#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/object.hpp"

/// The core's margin info dictionary as a Foundation dictionary, which reads and writes the core's entries.
/// An entry is copied when it is set.
@interface MorvaTTMarginInfoKV2 : NSMutableDictionary {
  std::shared_ptr<tandemtrim::platform::Dictionary> core_;
}
- (id)initWithCore:(std::shared_ptr<tandemtrim::platform::Dictionary>)core;
@end
