#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The rules by which a margin's text is corrected, independent of controls. They do not allocate for texts
/// of up to 15 digits.
namespace tandemtrim::margin_entry {

/// The text with everything but the ASCII digits removed.
std::string digitString(std::string text);

/// Whether the text has only ASCII digits; true for the empty text.
bool isDigitChar(std::string_view text) noexcept;

/// The ticket name of the margin box with this identifier; nullopt if the identifier is not a margin name.
std::optional<std::string_view> ticketName(std::string_view identifier) noexcept;

}  // namespace tandemtrim::margin_entry
