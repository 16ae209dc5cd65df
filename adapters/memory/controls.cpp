#include "adapters/memory/controls.hpp"

#include <algorithm>
#include <stdexcept>

#include "adapters/shared/notification_center.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::memory {

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
