#include "platform/integer_text.hpp"

#include <algorithm>
#include <limits>

namespace tandemtrim::platform {
namespace {

constexpr bool isBlank(char unit) { return unit == ' ' || (unit >= '\t' && unit <= '\r'); }

}  // namespace

// Counts downwards, since the smallest integer has no positive one of its size.
std::int64_t integerValue(std::string_view text) noexcept {
  using Limits = std::numeric_limits<std::int64_t>;
  const auto* unit = std::ranges::find_if_not(text, isBlank);
  const bool negative = unit != text.end() && *unit == '-';
  if (unit != text.end() && (*unit == '-' || *unit == '+')) ++unit;
  std::int64_t value = 0;
  for (; unit != text.end() && *unit >= '0' && *unit <= '9'; ++unit) {
    if (__builtin_mul_overflow(value, 10, &value) || __builtin_sub_overflow(value, *unit - '0', &value))
      return negative ? Limits::min() : Limits::max();
  }
  if (negative) return value;
  return value == Limits::min() ? Limits::max() : -value;
}

}  // namespace tandemtrim::platform
