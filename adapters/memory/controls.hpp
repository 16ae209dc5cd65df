#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/memory/panel_view.hpp"
#include "platform/controls.hpp"
#include "view/controls.hpp"

/// Controls that exist only in memory. They behave as a desktop toolkit's do: a change by the user runs the
/// action or posts the notification at once, a change by the program does neither, and a disabled control
/// ignores the user.
namespace tandemtrim::platform::memory {

/// A control as the user sees it, except for its place, which the panel knows.
class VisibleControl {
 public:
  virtual ~VisibleControl() = default;
  /// Fills in the members that this class of control has; leaves the rest unchanged.
  virtual void describe(ControlState& state) const = 0;
};

/// The base of every control: whether it is enabled, and the text that it shows.
template <class Class>
class ControlOf : public Class, public VisibleControl {
 public:
  void setEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool isEnabled() const { return enabled_; }
  [[nodiscard]] std::string stringValue() const override { return text_; }
  void setStringValue(std::string_view text) override { text_ = text; }
  void describe(ControlState& state) const override {
    state.enabled = isEnabled();
    state.text = this->stringValue();
  }

 private:
  bool enabled_ = true;
  std::string text_;
};

class TextLabel : public ControlOf<MorvaTTTextLabelKV2> {
 public:
  void describe(ControlState& state) const override;
  void setTextColor(Color color) override { color_ = color; }
  [[nodiscard]] Color textColor() const { return color_; }

 private:
  Color color_ = Color::blackColor;
};

template <class Class>
class IdentifiedControlOf : public ControlOf<Class> {
 public:
  void setIdentifier(std::string_view identifier) override { identifier_ = identifier; }
  [[nodiscard]] std::string identifier() const override { return identifier_; }

 private:
  std::string identifier_;
};

class TextBox : public IdentifiedControlOf<MorvaTTTextBoxKV2> {
 public:
  void describe(ControlState& state) const override;
  /// One edit by the user, which replaces the text by `text`; false when the box is disabled.
  bool userEdits(std::string_view text);
};

/// A stepper that shows its value in a text box.
class Stepper : public IdentifiedControlOf<MorvaTTStepperKV2> {
 public:
  void describe(ControlState& state) const override;
  void setMinValue(double value) override { min_ = value; }
  void setMaxValue(double value) override { max_ = value; }
  [[nodiscard]] double minValue() const { return min_; }
  [[nodiscard]] double maxValue() const { return max_; }
  /// The value is the text's integer value; the program may set one outside the bounds.
  void setStringValue(std::string_view text) override;
  [[nodiscard]] std::string stringValue() const override;
  /// The text box that takes the stepper's value when the user clicks.
  void setTextBox(TextBox* textBox) { textBox_ = textBox; }

  /// Clicks the upper half (`clicks` > 0) or the lower half that many times; each click moves the value by 1,
  /// within the bounds. False when the stepper is disabled.
  bool userClicks(int clicks);

 private:
  double value_ = 0;
  double min_ = 0;
  double max_ = 100;
  TextBox* textBox_ = nullptr;
};

/// The action of a push button or a check box, which runs when the user clicks it.
using Action = std::function<void(NibObject* sender)>;

class Button : public ControlOf<MorvaTTButtonKV2> {
 public:
  void describe(ControlState& state) const override;
  void setTitle(std::string_view title) override { title_ = title; }
  [[nodiscard]] const std::string& title() const { return title_; }
  void setAction(Action action) { action_ = std::move(action); }
  bool userClicks();

 private:
  std::string title_;
  Action action_;
};

class CheckBox : public ControlOf<MorvaTTCheckBoxKV2> {
 public:
  void describe(ControlState& state) const override;
  void setTitle(std::string_view title) override { title_ = title; }
  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] int state() const override { return state_; }
  void setState(int state) override { state_ = state; }
  void setAction(Action action) { action_ = std::move(action); }
  /// Toggles the box and runs its action; a mixed box, which only the program makes, turns on.
  bool userClicks();

 private:
  std::string title_;
  int state_ = kOff;
  Action action_;
};

class MenuItem : public platform::MenuItem {
 public:
  void setTitle(std::string_view title) override { title_ = title; }
  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] std::optional<std::string> representedObject() const override { return value_; }
  void setRepresentedObject(std::string_view value) override { value_ = value; }

 private:
  std::string title_;
  std::optional<std::string> value_;
};

class PopUpButton : public ControlOf<MorvaTTPopUpButtonKV2> {
 public:
  /// A menu with this number of items, of which the first is selected.
  explicit PopUpButton(std::size_t items) : items_(items) {}

  void describe(ControlState& state) const override;
  [[nodiscard]] std::size_t numberOfItems() const override { return items_.size(); }
  [[nodiscard]] MenuItem& itemAtIndex(std::size_t index) override { return items_.at(index); }
  [[nodiscard]] MenuItem* selectedItem() override { return selected_ ? &items_.at(*selected_) : nullptr; }
  void selectItemWithTitle(std::string_view title) override;

  [[nodiscard]] const std::vector<MenuItem>& items() const { return items_; }
  [[nodiscard]] std::optional<std::size_t> selectedIndex() const { return selected_; }
  bool userChooses(std::size_t index);

 private:
  std::vector<MenuItem> items_;
  std::optional<std::size_t> selected_ = items_.empty() ? std::nullopt : std::optional<std::size_t>(0);
};

}  // namespace tandemtrim::platform::memory
