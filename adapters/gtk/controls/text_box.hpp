#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtkmm/spinbutton.h>

#include "adapters/gtk/controls/control.hpp"
#include "adapters/gtk/controls/user_edits.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// The text of a spin button. It remembers the program's text byte for byte until the user edits it, even
/// where the toolkit cannot show it: it holds UTF-8 without null characters, and 65,534 bytes of it. What the
/// program makes of it while it has the focus becomes its description, which a screen reader speaks.
class TextBox : public IdentifiedControlOf<MorvaTTTextBoxKV2, Gtk::SpinButton> {
 public:
  explicit TextBox(Gtk::SpinButton& box);
  TextBox(const TextBox&) = delete;
  TextBox& operator=(const TextBox&) = delete;
  ~TextBox() override;

  void setEnabled(bool enabled) override;
  /// An edit that still waits is posted first.
  void setStringValue(std::string_view text) override;
  /// Posts the user's edit that still waits to be posted, if there is one.
  void flush() { edits_->flush(); }
  /// Whether an input method composes a text in it.
  [[nodiscard]] bool isComposing() const { return edits_->isComposing(); }
  /// The label of its limits, which describes it until the program makes a change.
  void setLimitLabel(GtkWidget* label);
  /// Shows the number to which a step led.
  void step(std::string_view text);

 private:
  void onEdited();
  void keepForUndo();
  void undo();
  void describe(const Glib::ustring& text);
  void describeByLimits();
  static gboolean onUndo(GtkWidget* box, GVariant* arguments, gpointer textBox);
  static void onLeave(GtkEventControllerFocus* focus, TextBox* self);

  std::unique_ptr<UserEdits> edits_;
  std::vector<std::string> earlier_;
  GtkWidget* limitLabel_ = nullptr;
  GtkEventController* undoKeys_;
  GtkEventController* focus_;
};

}  // namespace tandemtrim::platform::gtk
