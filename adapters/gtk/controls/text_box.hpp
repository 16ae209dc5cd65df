#pragma once

#include <string>
#include <string_view>

#include <gtkmm/entry.h>

#include "adapters/gtk/controls/control.hpp"
#include "adapters/gtk/controls/user_edits.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// A text box. It remembers the program's text byte for byte until the user edits it, even where the
/// toolkit cannot show it: its entries hold UTF-8 without null characters, and 65,534 bytes of it.
class TextBox : public IdentifiedControlOf<MorvaTTTextBoxKV2, Gtk::Entry> {
 public:
  explicit TextBox(Gtk::Entry& entry);

  void setEnabled(bool enabled) override;
  /// An edit that still waits is posted first.
  void setStringValue(std::string_view text) override;
  /// Posts the user's edit that still waits to be posted, if there is one.
  void flush() { edits_->flush(); }
  /// Whether an input method composes a text in it.
  [[nodiscard]] bool isComposing() const { return edits_->isComposing(); }

 private:
  void onEdited();

  std::unique_ptr<UserEdits> edits_;
};

}  // namespace tandemtrim::platform::gtk
