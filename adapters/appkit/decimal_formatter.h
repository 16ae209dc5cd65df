#pragma once

#import "adapters/appkit/foundation/toolkit.h"

/// Turns numbers into plain decimal integers and texts into integers, whatever the locale. Neither way ever
/// fails.
@interface MorvaTTDecimalFormatterKV2 : NSNumberFormatter
@end
