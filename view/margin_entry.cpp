#include "view/margin_entry.hpp"

#include <algorithm>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim::margin_entry {
namespace {

constexpr bool isDigit(char unit) { return unit >= '0' && unit <= '9'; }

}  // namespace

std::string digitString(std::string text) {
  // No byte of a character outside ASCII is an ASCII digit.
  std::erase_if(text, [](char unit) { return !isDigit(unit); });
  return text;
}

bool isDigitChar(std::string_view text) noexcept { return std::ranges::all_of(text, isDigit); }

std::optional<std::string_view> ticketName(std::string_view identifier) noexcept {
  for (std::size_t side = 0; side < kSides; ++side) {
    if (kMargins[side].marginName == identifier) return marginsOf(kTicketNames)[side];
  }
  return std::nullopt;
}

}  // namespace tandemtrim::margin_entry
