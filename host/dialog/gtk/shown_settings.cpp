#include "host/dialog/gtk/shown_settings.hpp"

#include <gtk/gtkunixprint.h>

namespace tandemtrim::host {

// gtkmm's own get_settings() adds a reference that is never released, as if GTK kept these settings. For one
// copy GTK says that copies are not collated, whatever its check button shows.
Glib::RefPtr<Gtk::PrintSettings> shownSettings(Gtk::PrintUnixDialog& dialog) {
  auto settings = Glib::wrap(gtk_print_unix_dialog_get_settings(dialog.gobj()));
  auto* const collate =
      gtk_widget_get_template_child(GTK_WIDGET(dialog.gobj()), GTK_TYPE_PRINT_UNIX_DIALOG, "collate_check");
  if (collate != nullptr)
    settings->set_collate(gtk_check_button_get_active(GTK_CHECK_BUTTON(collate)) != FALSE);
  return settings;
}

}  // namespace tandemtrim::host
