#pragma once

#include <gtkmm/printsettings.h>
#include <gtkmm/printunixdialog.h>

namespace tandemtrim::host {

/// The settings that GTK's tabs show now. The caller owns them.
Glib::RefPtr<Gtk::PrintSettings> shownSettings(Gtk::PrintUnixDialog& dialog);

}  // namespace tandemtrim::host
