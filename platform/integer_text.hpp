#pragma once

#include <cstdint>
#include <string_view>

namespace tandemtrim::platform {

/// The integer value of a text, read the same way everywhere and in every locale: leading white space is
/// skipped, one sign (+ or -) may follow, then come decimal digits up to the first other character. A text
/// that does not begin with a number is 0; a number outside 64 bits is clamped to the nearest 64-bit integer.
std::int64_t integerValue(std::string_view text) noexcept;

}  // namespace tandemtrim::platform
