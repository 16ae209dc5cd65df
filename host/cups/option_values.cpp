#include "host/cups/option_values.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <strings.h>

#include "host/cups/connection/attributes.hpp"
#include "host/failure.hpp"
#include "host/job/page_ranges.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

struct IntegerRange {
  const char* keyword;
  int smallest;
  int largest;
};

constexpr int kNoLimit = std::numeric_limits<int>::max();
// The bounds in IPP's registry; other options take any number.
constexpr std::array<IntegerRange, 3> kBounds{
    {{"copies", 1, kNoLimit}, {"job-priority", 1, 100}, {"number-up", 1, kNoLimit}}};

std::optional<int> numberFrom(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool isCount(std::string_view text) {
  const auto number = numberFrom(text);
  return number && *number > 0;
}

const IntegerRange* boundsOf(const std::string& keyword) {
  const auto* const bounds =
      std::ranges::find_if(kBounds, [&](const IntegerRange& entry) { return keyword == entry.keyword; });
  return bounds == kBounds.end() ? nullptr : bounds;
}

bool isNumber(const std::string& keyword, const std::string& value) {
  const auto number = numberFrom(value);
  const auto* const bounds = boundsOf(keyword);
  return number && (bounds == nullptr || (*number >= bounds->smallest && *number <= bounds->largest));
}

bool isSwitch(const std::string& value) {
  return std::ranges::any_of(std::array{"true", "false", "on", "off", "yes", "no"},
                             [&](const char* word) { return strcasecmp(word, value.c_str()) == 0; });
}

// "2", "2-4", "2-" or "-4". libcups accepts no blanks.
bool isRange(std::string_view value) {
  return value.find(' ') == std::string_view::npos && parsePageRange(value);
}

// "600dpi", "600x300dpi", "240dpcm".
bool isResolution(std::string_view value) {
  const auto unit = value.find("dp");
  if (unit == std::string_view::npos) return false;
  if (const auto name = value.substr(unit); name != "dpi" && name != "dpc" && name != "dpcm") return false;
  const auto across = value.substr(0, unit);
  const auto times = across.find('x');
  if (times == std::string_view::npos) return isCount(across);
  return isCount(across.substr(0, times)) && isCount(across.substr(times + 1));
}

// The number of an enumeration's value, or nullopt.
std::optional<std::string> enumeration(const std::string& keyword, const std::string& value) {
  const auto number = numberFrom(value).value_or(ippEnumValue(keyword.c_str(), value.c_str()));
  return number > 0 ? std::optional(std::to_string(number)) : std::nullopt;
}

// One value of this type in libcups's form; nullopt if libcups would misread it.
std::optional<std::string> encodableValue(ipp_tag_t type, const std::string& keyword,
                                          const std::string& value) {
  const auto valueIf = [&](bool isRight) { return isRight ? std::optional(value) : std::nullopt; };
  switch (type) {
    case IPP_TAG_ENUM:
      return enumeration(keyword, value);
    case IPP_TAG_BOOLEAN:
      return valueIf(isSwitch(value));
    case IPP_TAG_RANGE:
      return valueIf(isRange(value));
    case IPP_TAG_RESOLUTION:
      return valueIf(isResolution(value));
    default:
      return valueIf(isNumber(keyword, value));
  }
}

// The expected kind of value, for a message.
std::string expected(ipp_tag_t type, const std::string& keyword) {
  switch (type) {
    case IPP_TAG_ENUM:
      return "one of the keywords or numbers that IPP has for it";
    case IPP_TAG_BOOLEAN:
      return "true or false";
    case IPP_TAG_RANGE:
      return "a range of numbers, such as 2-4";
    case IPP_TAG_RESOLUTION:
      return "a resolution, such as 600dpi";
    default:
      break;
  }
  const auto* const bounds = boundsOf(keyword);
  if (bounds == nullptr) return "a number";
  const auto smallest = "a number from " + std::to_string(bounds->smallest);
  return smallest + (bounds->largest == kNoLimit ? " up" : " to " + std::to_string(bounds->largest));
}

// The values in libcups's form with commas between them. A text may contain commas and stays as it is, and so
// does an option that the request does not carry (null).
std::string encodableValues(const Option& option, ipp_attribute_t* attribute) {
  const auto type = ippGetValueTag(attribute);
  const bool isTyped = type == IPP_TAG_ENUM || type == IPP_TAG_INTEGER || type == IPP_TAG_BOOLEAN ||
                       type == IPP_TAG_RANGE || type == IPP_TAG_RESOLUTION;
  if (!isTyped) return option.value;
  std::string all;
  bool isRight = true;
  int count = 0;
  for (std::size_t start = 0; isRight && start <= option.value.size(); ++count) {
    const auto end = std::min(option.value.find(',', start), option.value.size());
    const auto value = encodableValue(type, option.keyword, option.value.substr(start, end - start));
    isRight = value.has_value();
    if (isRight) all += (all.empty() ? "" : ",") + *value;
    start = end + 1;
  }
  if (isRight && count == ippGetCount(attribute)) return all;
  throw Failure(Trouble::other,
                Fact(option.keyword + " is \"" + shortText(option.value) + "\", but must be " +
                         expected(type, option.keyword),
                     kUnsendable, {{"[option]", option.keyword}, {"[value]", shortText(option.value)}}),
                "; nothing was sent. Give another value with -o " + option.keyword + "=...");
}

}  // namespace

Options encodable(Options options) {
  for (auto& option : options) {
    const MessageHandle request(ippNewRequest(IPP_OP_CREATE_JOB));
    encodeOptions(request, {option});
    option.value = encodableValues(option, findAttribute(request, option.keyword));
  }
  return options;
}

}  // namespace tandemtrim::host
