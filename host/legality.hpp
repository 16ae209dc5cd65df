#pragma once

#include <string>
#include <vector>

#include "platform/memory/panel_view.hpp"

namespace tandemtrim::host {

/// A number's decimal text, cut to a whole number and held within 64 bits, the same in every locale.
std::string decimalText(double number);

/// The values to choose from: those of a menu's items, "On" and "Off" of a check box; none at all for a
/// number.
std::vector<std::string> choicesOf(const platform::memory::ControlState& control);

/// "0 to 30" of a text box, "Left, Center, Right" of a menu, "On, Off" of a check box.
std::string allowedValues(const platform::memory::ControlState& control);

/// Whether a stored value is one that a person could set at this control: a decimal integer in its usual form
/// within the box's limits, the value of one of a menu's items, "On" or "Off".
bool isLegal(const platform::memory::ControlState& control, const std::string& value);

/// The legal value to suggest instead: the nearest number, or the first choice.
std::string suggestedValue(const platform::memory::ControlState& control, const std::string& value);

}  // namespace tandemtrim::host
