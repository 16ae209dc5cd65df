#pragma once

#include <optional>
#include <type_traits>
#include <utility>

#include "adapters/appkit/foundation/guard.hpp"
#import "adapters/appkit/foundation/toolkit.h"

namespace tandemtrim::platform::appkit {

/// Raises the toolkit's exception for the outcome, if something was raised: NSInvalidArgumentException,
/// NSRangeException, NSMallocException or NSGenericException.
void raise(const Outcome& outcome);

/// Runs `work` and returns its result. An exception of the core is raised as one of the toolkit; no C++
/// exception reaches the caller.
template <class Work>
auto guarded(Work work) {
  using Result = std::invoke_result_t<Work>;
  const auto run = [](auto& call) {
    return runCatching(
        [](void* context) { (*static_cast<std::remove_reference_t<decltype(call)>*>(context))(); }, &call);
  };
  if constexpr (std::is_void_v<Result>) {
    raise(run(work));
  } else {
    std::optional<Result> result;
    auto keep = [&] { result.emplace(work()); };
    raise(run(keep));
    return *std::move(result);
  }
}

/// The same within an initialiser: an exception also releases `self`, which has no other owner yet.
template <class Work>
auto guardedInit(id self, Work work) {
  @try {
    return guarded(work);
  } @catch (id) {
    [self release];
    @throw;
  }
}

}  // namespace tandemtrim::platform::appkit
