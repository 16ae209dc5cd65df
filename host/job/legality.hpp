#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/extension.hpp"

namespace tandemtrim::host {

/// "0 to 30" for a number, "None, Half, Letter" for a choice, "On, Off" for an on/off setting.
std::string allowedValues(const platform::PanelSetting& setting);

/// Whether a user could set this value in the panel: a decimal integer in its usual form within the bounds,
/// or one of the choices.
bool isLegal(const platform::PanelSetting& setting, std::string_view value);

/// The legal value to suggest instead: the nearest number, the choice that differs in letter case only, off,
/// or the first choice.
std::string suggestedValue(const platform::PanelSetting& setting, const std::string& value);

/// The setting that switches the panel's function on and off, or null when there is none.
const platform::PanelSetting* switchOf(const std::vector<platform::PanelSetting>& settings);

/// Whether the panel's function is on; without a switch it always is.
bool isSwitchedOn(const std::vector<platform::PanelSetting>& settings);

}  // namespace tandemtrim::host
