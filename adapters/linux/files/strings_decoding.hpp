#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform::linux {

constexpr bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr char32_t joinSurrogates(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// A text as UTF-8 without its byte order mark. When not `whole`, `text` ends before the first fault.
struct DecodedText {
  std::string text;
  bool whole;
};

/// Decodes UTF-16 after a byte order mark of either order; nullopt without such a mark.
std::optional<DecodedText> decodeUtf16(std::string_view bytes);

/// Decodes UTF-16 after a byte order mark of either order, and UTF-8 with or without one.
DecodedText decodeText(std::string_view bytes);

}  // namespace tandemtrim::platform::linux
