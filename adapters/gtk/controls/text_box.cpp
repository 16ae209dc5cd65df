#include "adapters/gtk/controls/text_box.hpp"

#include <memory>

#include "adapters/shared/notification_center.hpp"

namespace tandemtrim::platform::gtk {

TextBox::TextBox(Gtk::Entry& entry)
    : IdentifiedControlOf(entry), edits_(std::make_unique<UserEdits>(entry, [this] { onEdited(); })) {
  IdentifiedControlOf::setStringValue(entry.get_text().raw());
}

// The toolkit takes the keyboard from a box that is greyed without telling the box, which warns of it.
void TextBox::setEnabled(bool enabled) {
  auto* const entry = GTK_WIDGET(widget().gobj());
  const bool hasKeyboard = (gtk_widget_get_state_flags(entry) & GTK_STATE_FLAG_FOCUS_WITHIN) != 0;
  if (!enabled && hasKeyboard) gtk_root_set_focus(gtk_widget_get_root(entry), nullptr);
  IdentifiedControlOf::setEnabled(enabled);
}

void TextBox::setStringValue(std::string_view text) {
  flush();
  IdentifiedControlOf::setStringValue(text);
  edits_->setText(Glib::ustring(std::string(text)).make_valid());
}

void TextBox::onEdited() {
  IdentifiedControlOf::setStringValue(widget().get_text().raw());
  memory::notificationCenter().post(NSControlTextDidChangeNotification, this);
}

}  // namespace tandemtrim::platform::gtk
