#pragma once

#include <string>
#include <string_view>

#include <gtkmm/entry.h>

#include "platform/gtk/control.hpp"
#include "platform/gtk/user_edits.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// A text box. Whatever the program asks of it comes after the person's edits: one that is not posted yet is
/// posted first, so that no call of the host ever meets a text that was typed and not corrected.
class TextBox : public IdentifiedControlOf<MorvaTTTextBoxKV2, Gtk::Entry> {
 public:
  explicit TextBox(Gtk::Entry& entry);

  [[nodiscard]] std::string stringValue() const override;
  void setStringValue(std::string_view text) override;
  /// Whether an input method composes a text in it.
  [[nodiscard]] bool isComposing() const { return edits_->isComposing(); }

 private:
  std::unique_ptr<UserEdits> edits_;
};

}  // namespace tandemtrim::platform::gtk
