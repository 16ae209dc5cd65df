#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// A text from elsewhere as a terminal may show it, on one line: in the place of each control character, line
/// separator and mark that turns the direction of writing round, and of each byte that is not UTF-8, stands
/// U+FFFD.
std::string plainText(std::string_view text);

/// The same, and of a text longer than 200 bytes its beginning and three dots.
std::string shortText(std::string_view text);

/// The text with what `inPlace` gives in the place of each of those characters and bytes.
std::string withoutControls(std::string_view text,
                            const std::function<std::string(std::string_view)>& inPlace);

}  // namespace tandemtrim::host
