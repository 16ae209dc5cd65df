#include "adapters/linux/files/strings_decoding.hpp"

#include "platform/utf8.hpp"

namespace tandemtrim::platform::linux {
namespace {

DecodedText decodeUnits(std::string_view bytes, std::size_t highByte) {
  DecodedText decoded{{}, false};
  const auto unitAt = [bytes, highByte](std::size_t offset) {
    const auto byte = [bytes](std::size_t at) { return char32_t{static_cast<unsigned char>(bytes[at])}; };
    return byte(offset + highByte) << 8 | byte(offset + 1 - highByte);
  };
  std::size_t offset = 0;
  while (offset + 2 <= bytes.size()) {
    auto unit = unitAt(offset);
    offset += 2;
    if (isHighSurrogate(unit)) {
      if (offset + 2 > bytes.size() || !isLowSurrogate(unitAt(offset))) return decoded;
      unit = joinSurrogates(unit, unitAt(offset));
      offset += 2;
    } else if (isLowSurrogate(unit)) {
      return decoded;
    }
    appendUtf8(decoded.text, unit);
  }
  decoded.whole = offset == bytes.size();
  return decoded;
}

}  // namespace

std::optional<DecodedText> decodeUtf16(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return decodeUnits(bytes.substr(2), 1);
  if (bytes.starts_with("\xFE\xFF")) return decodeUnits(bytes.substr(2), 0);
  return std::nullopt;
}

DecodedText decodeText(std::string_view bytes) {
  if (auto decoded = decodeUtf16(bytes)) return *std::move(decoded);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  const auto length = utf8PrefixLength(bytes);
  return {std::string(bytes.substr(0, length)), length == bytes.size()};
}

}  // namespace tandemtrim::platform::linux
