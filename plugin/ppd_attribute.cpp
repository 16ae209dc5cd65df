#include "plugin/ppd_attribute.hpp"

#include <cstddef>
#include <cstdint>

#include <cups/ppd.h>

namespace tandemtrim {
namespace {

// Length of the UTF-8 sequence that `lead` begins and the smallest code point that it may stand for; length 0
// for a byte that begins none.
struct Sequence {
  std::size_t length;
  std::uint32_t smallest;
};

constexpr Sequence sequenceOf(unsigned char lead) {
  if (lead < 0x80) return {1, 0};
  if (lead >= 0xC2 && lead < 0xE0) return {2, 0x80};
  if (lead >= 0xE0 && lead < 0xF0) return {3, 0x800};
  if (lead >= 0xF0 && lead < 0xF5) return {4, 0x10000};
  return {0, 0};
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const auto lead = static_cast<unsigned char>(text.front());
    const auto [length, smallest] = sequenceOf(lead);
    if (length == 0 || length > text.size()) return false;
    std::uint32_t point = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char next : text.substr(1, length - 1)) {
      const auto byte = static_cast<unsigned char>(next);
      if ((byte & 0xC0U) != 0x80) return false;
      point = (point << 6U) | (byte & 0x3FU);
    }
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (point < smallest || point > 0x10FFFF || surrogate) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::optional<std::string> ppdAttribute(ppd_file_s* ppd, std::string_view keyword) {
  const ppd_attr_t* attribute = ppdFindAttr(ppd, std::string(keyword).c_str(), nullptr);
  if (attribute == nullptr || attribute->value == nullptr || !isUtf8(attribute->value)) return std::nullopt;
  return attribute->value;
}

}  // namespace tandemtrim
