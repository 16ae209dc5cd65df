#include "adapters/linux/files/property_list_scalars.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace tandemtrim::platform::linux {
namespace {

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

std::string_view withoutBlanks(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

ObjectRef readString(std::string_view text) { return makeObject(std::string(text)); }

template <bool value>
ObjectRef readBoolean(std::string_view text) {
  return withoutBlanks(text).empty() ? makeObject(value) : nullptr;
}

ObjectRef readInteger(std::string_view text) {
  text = withoutBlanks(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (isHexadecimal) text.remove_prefix(2);
  std::uint64_t magnitude = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), magnitude, isHexadecimal ? 16 : 10);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) return nullptr;
  constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  const auto limit = isNegative ? kLargest + 1 : kLargest;
  magnitude = error == std::errc::result_out_of_range ? limit : std::min(magnitude, limit);
  return makeObject(static_cast<std::int64_t>(isNegative ? 0 - magnitude : magnitude));
}

ObjectRef readReal(std::string_view text) {
  text = withoutBlanks(text);
  // std::from_chars reads a minus sign but no plus sign.
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return nullptr;
  return makeObject(value);
}

// The numbers at the places of the pattern's digits, field by field; nullopt if the text does not match it.
std::optional<std::array<unsigned, 6>> dateFields(std::string_view text) {
  constexpr std::string_view kPattern = "0000-11-22T33:44:55Z";
  if (text.size() != kPattern.size()) return std::nullopt;
  std::array<unsigned, 6> fields{};
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!isDigit(kPattern[i])) {
      if (text[i] != kPattern[i]) return std::nullopt;
      continue;
    }
    if (!isDigit(text[i])) return std::nullopt;
    auto& field = fields.at(static_cast<std::size_t>(kPattern[i] - '0'));
    field = field * 10 + static_cast<unsigned>(text[i] - '0');
  }
  return fields;
}

ObjectRef readDate(std::string_view text) {
  namespace chrono = std::chrono;
  const auto fields = dateFields(withoutBlanks(text));
  if (!fields) return nullptr;
  const auto [year, month, day, hour, minute, second] = *fields;
  const chrono::year_month_day date{chrono::year(static_cast<int>(year)), chrono::month(month),
                                    chrono::day(day)};
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) return nullptr;
  constexpr chrono::sys_days kReference{chrono::year(2001) / chrono::January / 1};
  const auto time =
      chrono::sys_days(date) + chrono::hours(hour) + chrono::minutes(minute) + chrono::seconds(second);
  return makeObject(Date{static_cast<double>((time - kReference).count())});
}

// Decodes Base64. Bits that do not fill a byte are padding.
ObjectRef readData(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  Data data;
  std::size_t bits = 0;
  unsigned unused = 0;
  for (const char character : text) {
    if (isBlank(character) || character == '=') continue;
    const auto digit = kDigits.find(character);
    if (digit == std::string_view::npos) return nullptr;
    bits = bits << 6U | digit;
    unused += 6;
    if (unused < 8) continue;
    unused -= 8;
    data.bytes.push_back(static_cast<std::byte>(bits >> unused & 0xFFU));
  }
  return makeObject(std::move(data));
}

struct Reader {
  std::string_view element;
  ScalarReader read;
};
constexpr std::array kReaders{Reader{"key", readString},         Reader{"string", readString},
                              Reader{"integer", readInteger},    Reader{"real", readReal},
                              Reader{"true", readBoolean<true>}, Reader{"false", readBoolean<false>},
                              Reader{"date", readDate},          Reader{"data", readData}};

}  // namespace

ScalarReader findScalarReader(std::string_view element) {
  for (const auto& reader : kReaders) {
    if (reader.element == element) return reader.read;
  }
  return nullptr;
}

}  // namespace tandemtrim::platform::linux
