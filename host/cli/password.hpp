#pragma once

#include <optional>
#include <string>

namespace tandemtrim::host {

/// Asks for a password at the terminal that the program was started from, without showing it. None when there
/// is no terminal, and when the user types nothing. The terminal is restored before a signal takes effect.
std::optional<std::string> passwordFromTerminal(const std::string& prompt);

}  // namespace tandemtrim::host
