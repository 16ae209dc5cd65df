#pragma once

#include <optional>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// Whether the program was started with this signal ignored, as nohup and background jobs of a shell are.
bool isIgnored(int signal);

/// "interrupted" or "terminated".
const char* wordOf(int signal);

/// The failure of work that a signal ended, with the exit status that shells use for it. `failure` is the
/// work's own failure; none when the work had not begun.
Failure interruptedBy(int signal, const std::optional<Failure>& failure);

}  // namespace tandemtrim::host
