#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// What is wrong with the text of an -o, or none. libcups itself reads on silently where a user made a
/// mistake.
std::optional<std::string> optionSyntaxMistake(std::string_view text);

}  // namespace tandemtrim::host
