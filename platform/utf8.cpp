#include "platform/utf8.hpp"

#include <array>
#include <cstdint>

namespace tandemtrim::platform {
namespace {

// The sequences of several bytes by the range of their first byte, with the range of their second byte; all
// later bytes are 80 to BF.
struct Form {
  std::uint8_t firstLow, firstHigh, secondLow, secondHigh;
  std::size_t length;
};
constexpr std::array kForms{
    Form{0xC2, 0xDF, 0x80, 0xBF, 2}, Form{0xE0, 0xE0, 0xA0, 0xBF, 3}, Form{0xE1, 0xEC, 0x80, 0xBF, 3},
    Form{0xED, 0xED, 0x80, 0x9F, 3}, Form{0xEE, 0xEF, 0x80, 0xBF, 3}, Form{0xF0, 0xF0, 0x90, 0xBF, 4},
    Form{0xF1, 0xF3, 0x80, 0xBF, 4}, Form{0xF4, 0xF4, 0x80, 0x8F, 4},
};

constexpr bool within(char character, std::uint8_t low, std::uint8_t high) {
  const auto byte = static_cast<std::uint8_t>(character);
  return byte >= low && byte <= high;
}

// Length of the sequence at the beginning of a text that is not empty; 0 if it is not UTF-8.
std::size_t sequenceLength(std::string_view text) {
  if (within(text[0], 0x00, 0x7F)) return 1;
  for (const auto& form : kForms) {
    if (!within(text[0], form.firstLow, form.firstHigh)) continue;
    if (text.size() < form.length) return 0;
    if (!within(text[1], form.secondLow, form.secondHigh)) return 0;
    for (std::size_t i = 2; i < form.length; ++i) {
      if (!within(text[i], 0x80, 0xBF)) return 0;
    }
    return form.length;
  }
  return 0;
}

}  // namespace

std::size_t utf8PrefixLength(std::string_view text) noexcept {
  std::size_t length = 0;
  while (length < text.size()) {
    const auto sequence = sequenceLength(text.substr(length));
    if (sequence == 0) break;
    length += sequence;
  }
  return length;
}

void appendUtf8(std::string& text, char32_t point) {
  const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (point < 0x80) return append(point);
  if (point < 0x800) {
    append(0xC0 | point >> 6);
  } else if (point < 0x10000) {
    append(0xE0 | point >> 12);
    append(0x80 | (point >> 6 & 0x3F));
  } else {
    append(0xF0 | point >> 18);
    append(0x80 | (point >> 12 & 0x3F));
    append(0x80 | (point >> 6 & 0x3F));
  }
  append(0x80 | (point & 0x3F));
}

}  // namespace tandemtrim::platform
