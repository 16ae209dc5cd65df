#include "adapters/memory/controls.hpp"

#include <algorithm>
#include <stdexcept>

#include "adapters/shared/notification_center.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::memory {

void TextLabel::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::label;
  state.color = color_;
}

void TextBox::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::textBox;
  state.min = static_cast<double>(integerValue(min()));
  state.max = static_cast<double>(integerValue(max()));
}

void Stepper::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::stepper;
  state.min = min_;
  state.max = max_;
}

void Button::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::button;
  state.text = title_;
}

void CheckBox::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::checkBox;
  state.text = title_;
  state.state = state_;
}

void PopUpButton::describe(ControlState& state) const {
  ControlOf::describe(state);
  state.kind = ControlKind::popUp;
  state.selected = selected_;
  for (const auto& item : items_) state.choices.push_back({item.title(), item.representedObject()});
  state.text = selected_ ? items_.at(*selected_).title() : "";
}

bool TextBox::userEdits(std::string_view text) {
  if (!isEnabled()) return false;
  setStringValue(text);
  notificationCenter().post(NSControlTextDidChangeNotification, this);
  return true;
}

void Stepper::setStringValue(std::string_view text) { value_ = static_cast<double>(integerValue(text)); }

std::string Stepper::stringValue() const { return Object(value_).stringValue(); }

bool Stepper::userClicks(int clicks) {
  if (!isEnabled()) return false;
  for (int click = 0; click < std::abs(clicks); ++click) {
    const double moved = value_ + (clicks > 0 ? 1 : -1);
    setStringValue(Object(std::max(min_, std::min(moved, max_))).stringValue());
    if (textBox_ != nullptr) textBox_->setStringValue(stringValue());
  }
  return true;
}

bool Button::userClicks() {
  if (!isEnabled()) return false;
  if (action_) action_(this);
  return true;
}

bool CheckBox::userClicks() {
  if (!isEnabled()) return false;
  setState(state() == kOn ? kOff : kOn);
  if (action_) action_(this);
  return true;
}

void PopUpButton::selectItemWithTitle(std::string_view title) {
  const auto item = std::ranges::find(items_, title, &MenuItem::title);
  selected_.reset();
  if (item != items_.end()) selected_ = static_cast<std::size_t>(item - items_.begin());
}

bool PopUpButton::userChooses(std::size_t index) {
  if (!isEnabled()) return false;
  if (index >= items_.size()) throw std::out_of_range("the menu has no such item");
  selected_ = index;
  return true;
}

}  // namespace tandemtrim::platform::memory
