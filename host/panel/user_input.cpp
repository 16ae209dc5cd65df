#include "host/panel/user_input.hpp"

#include <algorithm>

#include "host/failure.hpp"
#include "host/job/legality.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;
using platform::memory::PanelView;
using Settings = std::vector<PanelSetting>;

const PanelSetting& settingNamed(const Settings& settings, const std::string& name) {
  const auto setting = std::ranges::find(settings, name, &PanelSetting::name);
  if (setting != settings.end()) return *setting;
  std::string names;
  for (const auto& known : settings) names += (names.empty() ? "" : ", ") + known.name;
  throw Failure("--set " + shortText(name) + ": the panel has no such setting; it has " + names,
                kWrongCommandLine);
}

// The reason is the panel's switch if it is another control, and off.
Failure greyed(const PanelView& view, const Settings& settings, const std::string& control,
               const std::string& what) {
  const auto* const onOff = switchOf(settings);
  const bool isSwitchedOff = onOff != nullptr && onOff->name != control &&
                             view.control(onOff->name).state == platform::CheckBox::kOff;
  if (!isSwitchedOff) return Failure(what + ": this control is disabled now; nothing was sent");
  return Failure(what + ": " + onOff->name +
                 " is off, so this control is disabled; nothing was sent. Turn it on first with --set " +
                 onOff->name + "=" + onOff->choices.front().value);
}

Failure wrongChoice(const PanelSetting& setting, const std::string& text) {
  return Failure(
      "--set " + setting.name + "=" + shortText(text) + ": choose one of " + allowedValues(setting),
      kWrongCommandLine);
}

// The panel keeps only the digits that are typed, so 12.7 becomes 127 and then the largest margin. A user at
// a screen sees that; a script does not.
void refuseUnlessDigits(const PanelSetting& box, const std::string& text) {
  const bool isDigits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  if (isDigits || isLegal(box, text)) return;
  throw Failure("--set " + box.name + "=" + shortText(text) + ": \"" + shortText(text) +
                    "\" is not a whole number in the digits 0 to 9; nothing was sent. Write one from " +
                    allowedValues(box) + ", or let the panel make one of it with --lenient",
                kWrongCommandLine);
}

// Each of these operates the setting's control; returns false when the control is greyed.

bool type(PanelView& view, const PanelSetting& box, const std::string& text, const Report& report) {
  if (!view.type(box.name, text)) return false;
  const auto after = view.control(box.name).text;
  if (after != text) {
    report(box.name + ": \"" + shortText(text) + "\" was typed, the panel made it " + after +
           " (allowed: " + allowedValues(box) + ")");
  }
  return true;
}

bool choose(PanelView& view, const PanelSetting& menu, const std::string& text) {
  const auto& items = view.control(menu.name).choices;
  const auto item = std::ranges::find(items, text, &platform::memory::MenuChoice::value);
  if (item == items.end()) throw wrongChoice(menu, text);
  return view.choose(menu.name, static_cast<std::size_t>(item - items.begin()));
}

bool switchTo(PanelView& view, const PanelSetting& box, const std::string& text) {
  if (!isLegal(box, text)) throw wrongChoice(box, text);
  const int wanted = text == box.choices.front().value ? platform::CheckBox::kOn : platform::CheckBox::kOff;
  // A click in the mixed state switches on, so switching off may take a second one.
  for (int clicks = 0; clicks < 2 && view.control(box.name).state != wanted; ++clicks) {
    if (!view.click(box.name)) return false;
  }
  return true;
}

bool set(PanelView& view, const PanelSetting& setting, const std::string& text, bool lenient,
         const Report& report) {
  if (setting.kind == PanelSetting::Kind::choice) return choose(view, setting, text);
  if (setting.kind == PanelSetting::Kind::onOff) return switchTo(view, setting, text);
  if (!lenient) refuseUnlessDigits(setting, text);
  return type(view, setting, text, report);
}

bool press(PanelView& view, const std::string& button) {
  const auto controls = view.controls();
  if (std::ranges::find(controls, button, &platform::memory::ControlState::name) == controls.end())
    throw Failure("--restore-defaults: the panel has no such button", kWrongCommandLine);
  return view.click(button);
}

}  // namespace

Edits enterInputs(PanelView& view, const Settings& settings, const CommandLine& line, const Report& report) {
  Edits edits;
  for (const auto& [name, text] : line.inputs) {
    if (text) {
      if (!set(view, settingNamed(settings, name), *text, line.lenient, report))
        throw greyed(view, settings, name, "--set " + name + "=" + *text);
      edits.all.insert(name);
      edits.restored.erase(name);
      continue;
    }
    if (!press(view, name)) throw greyed(view, settings, name, "--restore-defaults");
    // The button restores the defaults of all settings but the switch.
    for (const auto& setting : settings) {
      if (setting.kind == PanelSetting::Kind::onOff) continue;
      edits.all.insert(setting.name);
      edits.restored.insert(setting.name);
    }
  }
  return edits;
}

}  // namespace tandemtrim::host
