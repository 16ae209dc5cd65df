#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// The first mistake in the text of an -o, or nullopt. libcups itself silently ignores mistakes.
std::optional<std::string> optionSyntaxMistake(std::string_view text);

}  // namespace tandemtrim::host
