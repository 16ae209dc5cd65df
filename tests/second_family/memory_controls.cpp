#include <algorithm>
#include <stdexcept>

#include "adapters/memory/panel_view.hpp"
#include "platform/integer_text.hpp"
#include "tests/second_family/family.hpp"

namespace foldline {
namespace {

using namespace tandemtrim::platform;
using memory::ControlKind;
using memory::ControlState;

ControlState controlOf(const PanelSetting& setting) {
  ControlState state{.outlet = setting.name, .name = setting.name, .text = {}, .choices = {}, .selected = {}};
  state.kind = setting.kind == PanelSetting::Kind::number  ? ControlKind::textBox
               : setting.kind == PanelSetting::Kind::onOff ? ControlKind::checkBox
                                                           : ControlKind::popUp;
  if (setting.kind == PanelSetting::Kind::choice) {
    for (const auto& choice : setting.choices) state.choices.push_back({choice.title, choice.value});
  }
  state.min = static_cast<double>(setting.minimum);
  state.max = static_cast<double>(setting.maximum);
  return state;
}

class MemoryControls : public Controls, public memory::PanelView {
 public:
  explicit MemoryControls(std::vector<PanelSetting> settings) : settings_(std::move(settings)) {
    for (const auto& setting : settings_) controls_.push_back(controlOf(setting));
  }

  View& view() override { return *this; }
  void show(std::size_t setting, const std::string& value) override {
    auto& control = controls_.at(setting);
    control.text = value;
    const auto& choices = settings_.at(setting).choices;
    control.state = !choices.empty() && choices.front().value == value ? CheckBox::kOn : CheckBox::kOff;
    const auto choice = std::ranges::find(control.choices, value, &memory::MenuChoice::value);
    control.selected.reset();
    if (choice != control.choices.end()) control.selected = choice - control.choices.begin();
  }
  [[nodiscard]] std::string shown(std::size_t setting) const override {
    const auto& control = controls_.at(setting);
    const auto& values = kSettings.at(setting).values;
    if (control.kind == ControlKind::checkBox) return values.at(control.state == CheckBox::kOn ? 0 : 1);
    if (control.kind == ControlKind::popUp) return values.at(control.selected.value_or(0));
    return control.text;
  }

  [[nodiscard]] std::vector<ControlState> controls() const override { return controls_; }
  [[nodiscard]] ControlState control(std::string_view name) const override {
    return controls_.at(place(name));
  }
  bool type(std::string_view name, std::string_view text) override {
    const auto& setting = settings_.at(place(name));
    controls_.at(place(name)).text =
        std::to_string(std::clamp(integerValue(text), setting.minimum, setting.maximum));
    return true;
  }
  bool append(std::string_view /*name*/, std::string_view /*text*/) override { return false; }
  bool backspace(std::string_view /*name*/) override { return false; }
  bool click(std::string_view name) override {
    auto& state = controls_.at(place(name)).state;
    state = state == CheckBox::kOn ? CheckBox::kOff : CheckBox::kOn;
    return true;
  }
  bool step(std::string_view /*name*/, int /*steps*/) override { return false; }
  bool choose(std::string_view name, std::size_t index) override {
    controls_.at(place(name)).selected = index;
    return true;
  }

 private:
  [[nodiscard]] std::size_t place(std::string_view name) const {
    const auto control = std::ranges::find(controls_, name, &ControlState::name);
    if (control == controls_.end()) throw std::out_of_range("no such control");
    return static_cast<std::size_t>(control - controls_.begin());
  }

  std::vector<PanelSetting> settings_;
  std::vector<ControlState> controls_;
};

}  // namespace

std::unique_ptr<Controls> makeControls(const std::vector<PanelSetting>& settings) {
  return std::make_unique<MemoryControls>(settings);
}

}  // namespace foldline
