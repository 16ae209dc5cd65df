#pragma once

#include <string>

namespace tandemtrim::platform::appkit {

/// What a piece of work raised, by the kind of exception that the toolkit has for it.
enum class Raised { nothing, invalidArgument, range, noMemory, other };

struct Outcome {
  Raised raised = Raised::nothing;
  std::string reason;
};

/// Does the work and holds back every exception of the standard library. An exception of the toolkit passes
/// through, as it does through all of the core.
Outcome hold(void (*work)(void* context), void* context);

}  // namespace tandemtrim::platform::appkit
