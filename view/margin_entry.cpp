#include "view/margin_entry.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/setting_names.hpp"

namespace tandemtrim::margin_entry {
namespace {

constexpr bool isDigit(char unit) { return unit >= '0' && unit <= '9'; }

}  // namespace

std::string digitString(std::string text) {
  // A character outside ASCII is a run of bytes of which none is an ASCII digit.
  std::erase_if(text, [](char unit) { return !isDigit(unit); });
  return text;
}

bool isDigitChar(std::string_view text) noexcept { return std::ranges::all_of(text, isDigit); }

std::optional<std::string_view> ticketName(std::string_view identifier) noexcept {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kTickets{{
      {TTCINameMarginTop, TTPTMNameMarginTop},
      {TTCINameMarginBottom, TTPTMNameMarginBottom},
      {TTCINameMarginLeft, TTPTMNameMarginLeft},
      {TTCINameMarginRight, TTPTMNameMarginRight},
  }};
  for (const auto& [margin, ticket] : kTickets) {
    if (margin == identifier) return ticket;
  }
  return std::nullopt;
}

}  // namespace tandemtrim::margin_entry
