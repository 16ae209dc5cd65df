#include "host/dialog/panel/spoken_text.hpp"

#include <gtkmm/window.h>

#include "host/dialog/preview/page_row.hpp"

namespace tandemtrim::host {
namespace {

// The control that a screen reader takes for the focused one: for the text within a number's box, the box.
GtkWidget* knownToReader(GtkWidget* focused) {
  auto* const parent = gtk_widget_get_parent(focused);
  return GTK_IS_TEXT(focused) && GTK_IS_EDITABLE(parent) ? parent : focused;
}

// A control's description without the text: a menu's choice.
std::string ownDescription(GtkWidget* control) {
  auto* const parent = gtk_widget_get_parent(control);
  if (!GTK_IS_MENU_BUTTON(parent)) return "";
  auto* const label = gtk_menu_button_get_child(GTK_MENU_BUTTON(parent));
  return GTK_IS_LABEL(label) ? gtk_label_get_text(GTK_LABEL(label)) : "";
}

void describe(GtkWidget* control, const std::string& text) {
  auto* const accessible = GTK_ACCESSIBLE(control);
  if (text.empty()) {
    gtk_accessible_reset_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
  } else {
    gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, text.c_str(), -1);
  }
}

}  // namespace

SpokenText::SpokenText(Gtk::Widget& page) : page_(page) {
  if (auto* const window = dynamic_cast<Gtk::Window*>(page.get_root()))
    window->property_focus_widget().signal_changed().connect(
        sigc::mem_fun(*this, &SpokenText::describeFocused));
}

SpokenText::~SpokenText() { g_clear_weak_pointer(&described_); }

void SpokenText::set(const std::string& text) {
  if (text == text_) return;
  text_ = text;
  describeNothing();
  describeFocused();
}

void SpokenText::describeFocused() {
  auto* const root = page_.get_root();
  if (text_.empty() || described_ != nullptr || root == nullptr) return;
  auto* const focused = gtk_root_get_focus(root->gobj());
  if (focused == nullptr || gtk_widget_is_ancestor(focused, page_.gobj()) == FALSE) return;
  // An item of an open menu disappears with the menu.
  if (gtk_widget_get_ancestor(focused, GTK_TYPE_POPOVER) != nullptr || isTurnButton(focused)) return;
  g_set_weak_pointer(&described_, knownToReader(focused));
  const auto own = ownDescription(described_);
  describe(described_, own.empty() ? text_ : own + "\n" + text_);
}

void SpokenText::describeNothing() {
  if (described_ == nullptr) return;
  describe(described_, ownDescription(described_));
  g_clear_weak_pointer(&described_);
}

}  // namespace tandemtrim::host
