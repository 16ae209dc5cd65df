#pragma once

#include <string>
#include <string_view>

#include <gtkmm/adjustment.h>
#include <sigc++/trackable.h>

#include "adapters/gtk/controls/text_box.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// The number of a spin button. The user changes it by 1, by 10 or to its limits: with the two buttons, with
/// keys, with the wheel while the text has the focus, or with a screen reader.
class Stepper : public MorvaTTStepperKV2, public sigc::trackable {
 public:
  /// `range` is the spin button's adjustment.
  explicit Stepper(Glib::RefPtr<Gtk::Adjustment> range);
  Stepper(const Stepper&) = delete;
  Stepper& operator=(const Stepper&) = delete;
  ~Stepper() override;

  void setIdentifier(std::string_view identifier) override { identifier_ = identifier; }
  [[nodiscard]] std::string identifier() const override { return identifier_; }
  void setEnabled(bool enabled) override;
  void setMinValue(double value) override;
  void setMaxValue(double value) override;
  [[nodiscard]] double minValue() const { return min_; }
  [[nodiscard]] double maxValue() const { return max_; }
  [[nodiscard]] std::string stringValue() const override;
  /// The value is the text's integer value; the program may set one outside the bounds.
  void setStringValue(std::string_view text) override;

  /// Sets the text box of the spin button, which shows the value.
  void setTextBox(TextBox* textBox);
  /// Must be called after setTextBox().
  [[nodiscard]] Gtk::SpinButton& widget() const { return *spinButton_; }

 private:
  void show();
  void onStep();
  void takeWheelOver();
  static int onInput(GtkSpinButton* spinButton, double* value, Stepper* self);
  static void onKey(GtkSpinButton* spinButton, GtkScrollType step, Stepper* self);

  Glib::RefPtr<Gtk::Adjustment> range_;
  std::string identifier_;
  double value_ = 0;
  double min_ = 0;
  double max_ = 100;
  bool showing_ = false;
  TextBox* textBox_ = nullptr;
  Gtk::SpinButton* spinButton_ = nullptr;
  GtkEventController* wheel_ = nullptr;
};

}  // namespace tandemtrim::platform::gtk
