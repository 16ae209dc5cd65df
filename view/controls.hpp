#pragma once

#include <utility>

#include "platform/controls.hpp"
#include "platform/object.hpp"

namespace tandemtrim {

/// The common interface of the panel's controls: they change when the function is switched on or off.
class ViewComponent {
 public:
  virtual ~ViewComponent() = default;
  /// `flag` is a boolean: true when the function is on, so that the control is enabled.
  virtual void changeState(const platform::Object& flag) = 0;
};

// The classes that the nib instantiates. A platform derives its controls from them.

class MorvaTTCheckBoxKV2 : public platform::CheckBox, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;
};

class MorvaTTPopUpButtonKV2 : public platform::PopUpButton, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;
};

class MorvaTTButtonKV2 : public platform::Button, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;
};

class MorvaTTStepperKV2 : public platform::Stepper, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;
};

/// A label is never disabled: its text turns black when the flag's integer value is 1, else light grey.
class MorvaTTTextLabelKV2 : public platform::TextLabel, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;
};

/// A margin's text box with its range in whole millimetres. Both bounds are inclusive; null counts as 0.
class MorvaTTTextBoxKV2 : public platform::TextBox, public ViewComponent {
 public:
  void changeState(const platform::Object& flag) override;

  [[nodiscard]] const platform::ObjectRef& min() const { return min_; }
  virtual void setMin(platform::ObjectRef min) { min_ = std::move(min); }
  [[nodiscard]] const platform::ObjectRef& max() const { return max_; }
  virtual void setMax(platform::ObjectRef max) { max_ = std::move(max); }
  void setValueRange(platform::ObjectRef min, platform::ObjectRef max);

  /// The very object given if it is in the range, else the very bound that it violates; the minimum is
  /// checked first. Null if that bound is null.
  [[nodiscard]] const platform::Object* verifyValue(const platform::Object& value) const;

 private:
  platform::ObjectRef min_;
  platform::ObjectRef max_;
};

}  // namespace tandemtrim
