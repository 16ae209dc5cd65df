#pragma once

#include <optional>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// Whether the program ignores this signal, as it does when it was started by nohup, or by a script in the
/// background.
bool isIgnored(int signal);

/// "interrupted" or "terminated".
const char* wordOf(int signal);

/// The failure of work that a signal ended, with the exit status that shells use for it. `failure` is the
/// work's own failure; nullopt if the signal is the only cause.
Failure interruptedBy(int signal, const std::optional<Failure>& failure);

}  // namespace tandemtrim::host
