#include "platform/linux/property_list_scalars.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <system_error>

#include "platform/integer_text.hpp"

namespace tandemtrim::platform::linux {
namespace {

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

ObjectRef readInteger(std::string_view text) {
  text = withoutBlanks(text);
  const bool isSigned = text.starts_with('+') || text.starts_with('-');
  const auto digits = text.substr(isSigned ? 1 : 0);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return nullptr;
  return makeObject(integerValue(text));
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

// The numbers in the places of the pattern's digits, field by field; none when the text does not have its
// form.
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

struct Reader {
  std::string_view element;
  ScalarReader read;
};
constexpr std::array kReaders{Reader{"integer", readInteger}, Reader{"real", readReal},
                              Reader{"date", readDate}};

}  // namespace

ScalarReader findScalarReader(std::string_view element) {
  for (const auto& reader : kReaders) {
    if (reader.element == element) return reader.read;
  }
  return nullptr;
}

}  // namespace tandemtrim::platform::linux
