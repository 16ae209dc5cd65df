#pragma once

#include <optional>
#include <string>

namespace tandemtrim::host {

/// Asks for a password at the terminal that the program was started from, and shows nothing of it. None where
/// there is no terminal, and when the user types nothing. A signal takes effect with the terminal as it was.
std::optional<std::string> passwordFromTerminal(const std::string& prompt);

}  // namespace tandemtrim::host
