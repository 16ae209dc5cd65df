#include "host/dialog/panel/spoken_title.hpp"

namespace tandemtrim::host {

// Removes the relation by which the toolkit would name the button by its label, too.
void speakTitle(Gtk::Widget& button, std::string title) {
  if (const auto letter = title.find("(_"); letter != std::string::npos) title.erase(letter);
  std::erase(title, '_');
  auto* const accessible = GTK_ACCESSIBLE(button.gobj());
  gtk_accessible_reset_relation(accessible, GTK_ACCESSIBLE_RELATION_LABELLED_BY);
  gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, title.c_str(), -1);
}

}  // namespace tandemtrim::host
