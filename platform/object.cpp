#include "platform/object.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "platform/integer_text.hpp"

namespace tandemtrim::platform {
namespace {

std::int64_t integerOf(double number) {
  // 2^63 is the first double that a 64-bit integer cannot hold.
  constexpr double kFirstTooLarge = 9223372036854775808.0;
  if (std::isnan(number)) return 0;
  if (number >= kFirstTooLarge) return std::numeric_limits<std::int64_t>::max();
  if (number < -kFirstTooLarge) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(number);
}

template <class... Number>
std::string decimalText(Number... number) {
  std::array<char, 32> text;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), number...);
  return {text.data(), result.ptr};
}

[[noreturn]] void refuse(const char* operation) {
  throw std::invalid_argument(std::string("this kind of object has no ") + operation);
}

}  // namespace

std::int64_t Object::integerValue() const {
  if (const auto* integer = as<std::int64_t>()) return *integer;
  if (const auto* real = as<double>()) return integerOf(*real);
  if (const auto* boolean = as<bool>()) return *boolean ? 1 : 0;
  if (const auto* text = as<std::string>()) return platform::integerValue(*text);
  refuse("integer value");
}

std::string Object::stringValue() const {
  // With sixteen significant digits 0.1 stays "0.1", and 5.0 is "5".
  constexpr int kDigits = 16;
  if (const auto* integer = as<std::int64_t>()) return decimalText(*integer);
  if (const auto* real = as<double>()) return decimalText(*real, std::chars_format::general, kDigits);
  if (const auto* boolean = as<bool>()) return *boolean ? "1" : "0";
  refuse("decimal text");
}

const std::string& requiredText(const ObjectRef& object, std::string_view what) {
  const auto* text = object ? object->as<std::string>() : nullptr;
  if (text == nullptr) throw std::invalid_argument(std::string(what) + " is missing or not a text");
  return *text;
}

std::string requiredDecimalText(const ObjectRef& object, std::string_view what) {
  if (!object) throw std::invalid_argument(std::string(what) + " is missing");
  return object->stringValue();
}

}  // namespace tandemtrim::platform
