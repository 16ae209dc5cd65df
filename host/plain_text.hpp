#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tandemtrim::host {

/// A text from elsewhere, on one line and safe for a terminal: U+FFFD replaces each control character, line
/// separator, embedding, override or isolate of the direction of writing, and byte that is not UTF-8.
std::string plainText(std::string_view text);

/// The same, but a text longer than 200 bytes is cut, with three dots at the end.
std::string shortText(std::string_view text);

/// The text with each of those characters and bytes replaced by the result of `inPlace`.
std::string withoutControls(std::string_view text,
                            const std::function<std::string(std::string_view)>& inPlace);

}  // namespace tandemtrim::host
