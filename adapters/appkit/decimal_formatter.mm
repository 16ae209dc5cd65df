#import "adapters/appkit/decimal_formatter.h"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/raise.hpp"
#include "view/decimal_formatter.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

@implementation MorvaTTDecimalFormatterKV2

- (NSString*)stringForObjectValue:(id)object {
  return appkit::guarded([&] {
    const auto value = appkit::objectOf(object);
    return appkit::stringOf(tandemtrim::MorvaTTDecimalFormatterKV2().stringForObjectValue(value.get()));
  });
}

- (BOOL)getObjectValue:(id*)object forString:(NSString*)string errorDescription:(NSString**)error {
  return appkit::guarded([&]() -> BOOL {
    platform::ObjectRef value;
    const bool read =
        tandemtrim::MorvaTTDecimalFormatterKV2().getObjectValue(value, appkit::textOf(string), nullptr);
    if (object != nullptr) *object = appkit::foundationObjectOf(value);
    return read;
  });
}

@end
