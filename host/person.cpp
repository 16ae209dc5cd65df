#include "host/person.hpp"

#include <algorithm>

#include "host/failure.hpp"
#include "host/legality.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::memory::ControlKind;
using platform::memory::ControlState;
using platform::memory::PanelView;

ControlState controlNamed(const PanelView& view, const std::string& name) {
  std::string names;
  for (const auto& control : settingControls(view)) {
    if (control.name == name) return control;
    names += (names.empty() ? "" : ", ") + std::string(control.name);
  }
  throw Failure("--set " + name + ": the panel has no such setting; it has " + names, kWrongCommandLine);
}

Failure greyed(const std::string& what) {
  return Failure(what +
                 ": Tandem Trim is off, so this control is greyed; nothing was sent. Turn it on first by "
                 "--set Valid=On");
}

Failure notTaken(const ControlState& control, const std::string& text) {
  return Failure(
      "--set " + std::string(control.name) + "=" + text + ": choose one of " + allowedValues(control),
      kWrongCommandLine);
}

void type(PanelView& view, const ControlState& box, const std::string& text, const Note& note) {
  if (!view.type(box.outlet, text)) throw greyed("--set " + std::string(box.name) + "=" + text);
  const auto after = view.control(box.outlet);
  if (after.text == text) return;
  note(std::string(box.name) + ": \"" + shortText(text) + "\" was typed, the panel made it " + after.text +
       " (allowed: " + allowedValues(after) + ")");
}

void choose(PanelView& view, const ControlState& menu, const std::string& text) {
  const auto choice = std::find_if(menu.choices.begin(), menu.choices.end(),
                                   [&](const auto& item) { return item.value == text; });
  if (choice == menu.choices.end()) throw notTaken(menu, text);
  const auto index = static_cast<std::size_t>(choice - menu.choices.begin());
  if (!view.choose(menu.outlet, index)) throw greyed("--set " + std::string(menu.name) + "=" + text);
}

void switchTo(PanelView& view, const ControlState& box, const std::string& text) {
  if (!isLegal(box, text)) throw notTaken(box, text);
  const int wanted = text == "On" ? platform::CheckBox::kOn : platform::CheckBox::kOff;
  // A click from the mixed state gives on, so that off may take a second one.
  for (int clicks = 0; clicks < 2 && view.control(box.outlet).state != wanted; ++clicks) {
    if (!view.click(box.outlet)) throw greyed("--set " + std::string(box.name) + "=" + text);
  }
}

// The defaults come back for all settings but the switch.
void press(PanelView& view, const std::string& button, std::set<std::string>& setAnew) {
  const auto controls = view.controls();
  if (std::none_of(controls.begin(), controls.end(),
                   [&](const auto& control) { return control.name == button; })) {
    throw Failure("--restore-defaults: the panel has no such button", kWrongCommandLine);
  }
  if (!view.click(button)) throw greyed("--restore-defaults");
  for (const auto& control : settingControls(view)) {
    if (control.kind != ControlKind::checkBox) setAnew.emplace(control.name);
  }
}

}  // namespace

std::vector<ControlState> settingControls(const PanelView& view) {
  auto controls = view.controls();
  std::erase_if(controls, [](const ControlState& control) {
    const bool holdsValue = control.kind == ControlKind::textBox || control.kind == ControlKind::popUp ||
                            control.kind == ControlKind::checkBox;
    return control.name.empty() || !holdsValue;
  });
  return controls;
}

std::set<std::string> act(PanelView& view, const std::vector<Input>& inputs, const Note& note) {
  std::set<std::string> setAnew;
  for (const auto& [name, text] : inputs) {
    if (!text) {
      press(view, name, setAnew);
      continue;
    }
    const auto control = controlNamed(view, name);
    if (control.kind == ControlKind::textBox) type(view, control, *text, note);
    if (control.kind == ControlKind::popUp) choose(view, control, *text);
    if (control.kind == ControlKind::checkBox) switchTo(view, control, *text);
    setAnew.insert(name);
  }
  return setAnew;
}

}  // namespace tandemtrim::host
