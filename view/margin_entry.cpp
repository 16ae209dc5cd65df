#include "view/margin_entry.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "model/ticket_names.hpp"
#include "plugin/setting_names.hpp"

namespace tandemtrim::margin_entry {
namespace {

constexpr std::string_view kDigits = "0123456789";

}  // namespace

std::string digitString(std::string_view text) {
  std::string digits;
  // A character outside ASCII is a run of bytes of which none is an ASCII digit.
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (const auto unit = text.substr(index, 1); isDigitChar(unit)) digits += unit;
  }
  return digits;
}

bool isDigitChar(std::string_view text) noexcept {
  return text.find_first_not_of(kDigits) == std::string_view::npos;
}

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
