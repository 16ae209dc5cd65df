#pragma once

#import "adapters/appkit/foundation/toolkit.h"

/// Turns numbers into plain decimal integers and texts into integers, in the same way in every locale.
@interface MorvaTTDecimalFormatterKV2 : NSNumberFormatter
@end
