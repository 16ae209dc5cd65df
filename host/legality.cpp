#include "host/legality.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

#include <strings.h>

#include "platform/integer_text.hpp"
#include "platform/object.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::ControlKind;
using platform::memory::ControlState;

}  // namespace

std::vector<std::string> choicesOf(const ControlState& control) {
  if (control.kind == ControlKind::checkBox) return {"On", "Off"};
  std::vector<std::string> values;
  for (const auto& choice : control.choices) {
    if (choice.value) values.push_back(*choice.value);
  }
  return values;
}

std::string decimalText(double number) { return std::to_string(platform::Object(number).integerValue()); }

std::string allowedValues(const ControlState& control) {
  if (control.kind == ControlKind::textBox)
    return decimalText(control.min) + " to " + decimalText(control.max);
  std::string list;
  for (const auto& value : choicesOf(control)) list += (list.empty() ? "" : ", ") + value;
  return list;
}

bool isLegal(const ControlState& control, const std::string& value) {
  if (control.kind != ControlKind::textBox) {
    const auto values = choicesOf(control);
    return std::find(values.begin(), values.end(), value) != values.end();
  }
  const auto number = platform::integerValue(value);
  const auto asReal = static_cast<double>(number);
  return std::to_string(number) == value && asReal >= control.min && asReal <= control.max;
}

std::string suggestedValue(const ControlState& control, const std::string& value) {
  if (control.kind == ControlKind::textBox) {
    const auto number = static_cast<double>(platform::integerValue(value));
    return decimalText(std::max(control.min, std::min(control.max, number)));
  }
  const auto values = choicesOf(control);
  for (const auto& choice : values) {
    if (strcasecmp(choice.c_str(), value.c_str()) == 0) return choice;
  }
  // A check box shows what it does not know as off.
  if (control.kind == ControlKind::checkBox) return "Off";
  return values.empty() ? "" : values.front();
}

}  // namespace tandemtrim::host
