#pragma once

#include <string>

namespace tandemtrim::platform::appkit {

/// The kind of exception that was raised; the toolkit has an exception for each kind.
enum class Raised { nothing, invalidArgument, range, noMemory, other };

struct Outcome {
  Raised raised = Raised::nothing;
  std::string reason;
};

/// Runs `work` and catches every exception of the standard library. An exception of the toolkit passes
/// through, as it does through all of the core.
Outcome runCatching(void (*work)(void* context), void* context);

}  // namespace tandemtrim::platform::appkit
