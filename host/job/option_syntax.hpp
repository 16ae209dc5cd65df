#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// The mistake in the text of an -o, or none. libcups itself silently ignores mistakes.
std::optional<std::string> optionSyntaxMistake(std::string_view text);

}  // namespace tandemtrim::host
