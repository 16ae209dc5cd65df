#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tandemtrim::platform {

/// Length in bytes of the longest prefix of `text` that is valid UTF-8: no overlong form, no surrogate,
/// nothing above U+10FFFF.
std::size_t utf8PrefixLength(std::string_view text) noexcept;

inline bool isUtf8(std::string_view text) noexcept { return utf8PrefixLength(text) == text.size(); }

/// Appends a code point, which must be at most U+10FFFF. A surrogate is encoded in the same way, although
/// isUtf8() rejects the result.
void appendUtf8(std::string& text, char32_t point);

}  // namespace tandemtrim::platform
