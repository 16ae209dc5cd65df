#include "platform/integer_text.hpp"

#include <charconv>
#include <limits>
#include <system_error>

namespace tandemtrim::platform {

std::int64_t integerValue(std::string_view text) noexcept {
  const auto start = text.find_first_not_of(" \t\n\v\f\r");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  const bool negative = text.front() == '-';
  // std::from_chars reads a minus sign but no plus sign; "+-" does not begin a number.
  if (text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return 0;
  }
  std::int64_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return negative ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

}  // namespace tandemtrim::platform
