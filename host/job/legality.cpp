#include "host/job/legality.hpp"

#include <algorithm>

#include <strings.h>

#include "platform/integer_text.hpp"

namespace tandemtrim::host {
using platform::PanelSetting;

std::string allowedValues(const PanelSetting& setting) {
  if (setting.kind == PanelSetting::Kind::number)
    return std::to_string(setting.minimum) + " to " + std::to_string(setting.maximum);
  std::string list;
  for (const auto& choice : setting.choices) list += (list.empty() ? "" : ", ") + choice.value;
  return list;
}

bool isLegal(const PanelSetting& setting, std::string_view value) {
  if (setting.kind != PanelSetting::Kind::number)
    return std::ranges::find(setting.choices, value, &platform::SettingChoice::value) !=
           setting.choices.end();
  const auto number = platform::integerValue(value);
  return std::to_string(number) == value && number >= setting.minimum && number <= setting.maximum;
}

std::string suggestedValue(const PanelSetting& setting, const std::string& value) {
  if (setting.kind == PanelSetting::Kind::number) {
    const auto number = platform::integerValue(value);
    return std::to_string(std::max(setting.minimum, std::min(setting.maximum, number)));
  }
  for (const auto& choice : setting.choices) {
    if (strcasecmp(choice.value.c_str(), value.c_str()) == 0) return choice.value;
  }
  if (setting.choices.empty()) return "";
  // A check box shows an unknown value as off.
  return setting.kind == PanelSetting::Kind::onOff ? setting.choices.back().value
                                                   : setting.choices.front().value;
}

const PanelSetting* switchOf(const std::vector<PanelSetting>& settings) {
  const auto onOff = std::ranges::find(settings, PanelSetting::Kind::onOff, &PanelSetting::kind);
  return onOff == settings.end() ? nullptr : &*onOff;
}

bool isSwitchedOn(const std::vector<PanelSetting>& settings) {
  const auto* const onOff = switchOf(settings);
  return onOff == nullptr || onOff->value == onOff->choices.front().value;
}

}  // namespace tandemtrim::host
