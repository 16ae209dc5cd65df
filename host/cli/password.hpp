#pragma once

#include <optional>
#include <string>

namespace tandemtrim::host {

/// Asks for a password at the terminal that the program was started from, without showing it. nullopt without
/// a terminal, when the user types nothing, and when a signal ends the question. The terminal is restored
/// before a signal takes effect.
std::optional<std::string> passwordFromTerminal(const std::string& prompt);

}  // namespace tandemtrim::host
