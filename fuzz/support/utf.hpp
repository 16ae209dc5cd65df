#pragma once

#include <string>
#include <string_view>

/// Encodings by the C library, for comparison with the project's own functions.
namespace tandemtrim::fuzz {

bool isUtf8(std::string_view text);

/// The UTF-8 text in "UTF-16LE" or "UTF-16BE" behind a byte order mark.
std::string utf16(std::string_view text, const char* encoding);

}  // namespace tandemtrim::fuzz
