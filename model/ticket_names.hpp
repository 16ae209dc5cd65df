#pragma once

#include <array>
#include <string_view>

#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {

/// Ticket names: how the view addresses a setting.
inline constexpr std::string_view TTPTMNameValid = "Valid";
inline constexpr std::string_view TTPTMNameDirection = "Direction";
inline constexpr std::string_view TTPTMNamePosition = "Position";
inline constexpr std::string_view TTPTMNameMarginTop = "Top";
inline constexpr std::string_view TTPTMNameMarginBottom = "Bottom";
inline constexpr std::string_view TTPTMNameMarginLeft = "Left";
inline constexpr std::string_view TTPTMNameMarginRight = "Right";

/// The ticket name of each setting.
inline constexpr std::array kTicketNames{
    TTPTMNameValid,        TTPTMNameDirection,  TTPTMNamePosition,    TTPTMNameMarginTop,
    TTPTMNameMarginBottom, TTPTMNameMarginLeft, TTPTMNameMarginRight,
};
static_assert(kTicketNames.size() == kSettings.size(), "each setting needs its ticket name");

/// Names of the fields of a ticket construction entry. No code here reads them.
inline constexpr std::string_view TTPTMKeyInstancePointer = "InstancePointer";
inline constexpr std::string_view TTPTMKeyClass = "Class";
inline constexpr std::string_view TTPTMKeyDefaultValue = "DefaultValue";
inline constexpr std::string_view TTPTMKeyTicketKey = "TicketKey";

}  // namespace tandemtrim
