#include "platform/gtk/text_box.hpp"

#include <memory>

#include "platform/memory/notification_center.hpp"

namespace tandemtrim::platform::gtk {

TextBox::TextBox(Gtk::Entry& entry)
    : IdentifiedControlOf(entry), edits_(std::make_unique<UserEdits>(entry, [this] {
        memory::notificationCenter().post(NSControlTextDidChangeNotification, this);
      })) {}

std::string TextBox::stringValue() const {
  edits_->flush();
  return widget().get_text();
}

void TextBox::setStringValue(std::string_view text) {
  edits_->flush();
  edits_->setText(Glib::ustring(std::string(text)).make_valid());
}

}  // namespace tandemtrim::platform::gtk
