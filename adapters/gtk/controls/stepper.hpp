#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <gtkmm/box.h>

#include "adapters/gtk/controls/control.hpp"
#include "adapters/gtk/controls/repeating_button.hpp"
#include "adapters/gtk/controls/text_box.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// A pair of buttons that moves a number by 1 and shows it in a text box. The Up and Down keys in that box
/// move it too, and so does the wheel, while the box has the focus.
class Stepper : public IdentifiedControlOf<MorvaTTStepperKV2, Gtk::Box> {
 public:
  /// The stepper of a box that holds the two buttons, the lower one first; null when it does not.
  [[nodiscard]] static std::unique_ptr<Stepper> make(Gtk::Box& box);
  Stepper(const Stepper&) = delete;
  Stepper& operator=(const Stepper&) = delete;
  ~Stepper() override;

  void setMinValue(double value) override { min_ = value; }
  void setMaxValue(double value) override { max_ = value; }
  [[nodiscard]] double minValue() const { return min_; }
  [[nodiscard]] double maxValue() const { return max_; }
  [[nodiscard]] std::string stringValue() const override;
  /// The value is the text's integer value; the program may set one outside the bounds.
  void setStringValue(std::string_view text) override;
  /// The text box that shows the value and whose keys and wheel move it.
  void setTextBox(TextBox* textBox);

 private:
  Stepper(Gtk::Box& box, GtkWidget* lower, GtkWidget* upper);
  void move(int by);
  static gboolean onKey(GtkEventControllerKey* keys, guint key, guint code, GdkModifierType modifiers,
                        Stepper* self);
  static gboolean onWheel(GtkEventControllerScroll* wheel, double dx, double dy, Stepper* self);

  double value_ = 0;
  double min_ = 0;
  double max_ = 100;
  TextBox* textBox_ = nullptr;
  GtkEventController* keys_ = nullptr;
  GtkEventController* wheel_ = nullptr;
  RepeatingButton lower_;
  RepeatingButton upper_;
};

}  // namespace tandemtrim::platform::gtk
