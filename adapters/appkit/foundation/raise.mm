#include "adapters/appkit/foundation/raise.hpp"

#include "adapters/appkit/foundation/foundation.hpp"

namespace tandemtrim::platform::appkit {
namespace {

NSString* exceptionNameOf(Raised raised) {
  switch (raised) {
    case Raised::invalidArgument:
      return NSInvalidArgumentException;
    case Raised::range:
      return NSRangeException;
    case Raised::noMemory:
      return NSMallocException;
    default:
      return NSGenericException;
  }
}

}  // namespace

void raise(const Outcome& outcome) {
  if (outcome.raised == Raised::nothing) return;
  [NSException raise:exceptionNameOf(outcome.raised) format:@"%@", stringOf(outcome.reason)];
}

}  // namespace tandemtrim::platform::appkit
