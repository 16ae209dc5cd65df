#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The rules by which a margin's text is corrected, without a control in sight. For texts of up to 15 digits
/// none of them allocates.
namespace tandemtrim::margin_entry {

/// The text with everything but the ASCII digits removed.
std::string digitString(std::string text);

/// Whether the text holds nothing but ASCII digits; the empty text does.
bool isDigitChar(std::string_view text) noexcept;

/// The ticket of the margin box with this identifier; none for an identifier that is no margin name.
std::optional<std::string_view> ticketName(std::string_view identifier) noexcept;

}  // namespace tandemtrim::margin_entry
