#include "host/dialog/gtk/shown_settings.hpp"

#include <gtk/gtkunixprint.h>

namespace tandemtrim::host {

// gtkmm's own get_settings() adds a reference that is never released, as if GTK kept these settings.
Glib::RefPtr<Gtk::PrintSettings> shownSettings(Gtk::PrintUnixDialog& dialog) {
  return Glib::wrap(gtk_print_unix_dialog_get_settings(dialog.gobj()));
}

}  // namespace tandemtrim::host
