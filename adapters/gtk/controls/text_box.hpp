#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtkmm/spinbutton.h>

#include "adapters/gtk/controls/control.hpp"
#include "adapters/gtk/controls/user_edits.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// The text of a spin button. It remembers the program's text byte for byte until the user edits it, even a
/// text that the toolkit cannot show: one that is longer than 65,534 bytes, is not UTF-8 or contains null
/// characters. A text that the program sets while the box has the focus becomes its description, which a
/// screen reader speaks.
class TextBox : public IdentifiedControlOf<MorvaTTTextBoxKV2, Gtk::SpinButton> {
 public:
  explicit TextBox(Gtk::SpinButton& box);
  TextBox(const TextBox&) = delete;
  TextBox& operator=(const TextBox&) = delete;
  ~TextBox() override;

  void setEnabled(bool enabled) override;
  /// Posts a pending edit first.
  void setStringValue(std::string_view text) override;
  /// Posts the user's pending edit, if there is one.
  void flush() { edits_->flush(); }
  /// Whether an input method is composing a text in it.
  [[nodiscard]] bool isComposing() const { return edits_->isComposing(); }
  /// Sets the label of its limits, which is its description. While the box has the focus, a text that the
  /// program sets replaces this description until the focus leaves.
  void setLimitLabel(GtkWidget* label);
  /// Shows the number after a step, and keeps the previous one for undo.
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
