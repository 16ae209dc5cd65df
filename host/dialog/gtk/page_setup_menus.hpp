#pragma once

#include <gtkmm/printunixdialog.h>

namespace tandemtrim::host {

/// Shows this page setup in the dialog, once its printer is selected.
void showPageSetup(Gtk::PrintUnixDialog& dialog, const Gtk::PageSetup& setup);

/// Makes the menus of papers and of orientations live or grey.
void enablePageSetup(Gtk::PrintUnixDialog& dialog, bool isLive);

}  // namespace tandemtrim::host
