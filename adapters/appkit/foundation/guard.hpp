#pragma once

#include <string>

namespace tandemtrim::platform::appkit {

/// What was raised, by the kinds of exception that the toolkit has.
enum class Raised { nothing, invalidArgument, range, noMemory, other };

struct Outcome {
  Raised raised = Raised::nothing;
  std::string reason;
};

/// Runs `work` and catches every exception of the standard library. An exception of the toolkit passes
/// through, as it does through all of the core.
Outcome runCatching(void (*work)(void* context), void* context);

}  // namespace tandemtrim::platform::appkit
