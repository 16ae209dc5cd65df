#include "adapters/appkit/foundation/guard.hpp"

#include <new>
#include <stdexcept>

namespace tandemtrim::platform::appkit {

// This file is C++, since handlers in Objective-C++ miss C++ exceptions on GNUstep.
Outcome runCatching(void (*work)(void* context), void* context) {
  try {
    work(context);
    return {};
  } catch (const std::bad_alloc&) {
    return {Raised::noMemory, {}};
  } catch (const std::out_of_range& error) {
    return {Raised::range, error.what()};
  } catch (const std::invalid_argument& error) {
    return {Raised::invalidArgument, error.what()};
  } catch (const std::exception& error) {
    return {Raised::other, error.what()};
  }
}

}  // namespace tandemtrim::platform::appkit
