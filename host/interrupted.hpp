#pragma once

#include <optional>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// Whether the program was started with this signal ignored, as a shell starts what it leaves behind.
bool isIgnored(int signal);

/// "interrupted" or "terminated".
const char* wordOf(int signal);

/// The failure of work that a signal ended, with the exit status that shells give to it. `failure` is what
/// the work failed with; none when it had not begun.
Failure interruptedBy(int signal, const std::optional<Failure>& failure);

}  // namespace tandemtrim::host
