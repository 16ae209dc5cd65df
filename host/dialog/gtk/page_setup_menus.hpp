#pragma once

#include <gtkmm/printunixdialog.h>

namespace tandemtrim::host {

/// Shows this page setup in the dialog. To be called once the printer is selected.
void showPageSetup(Gtk::PrintUnixDialog& dialog, const Gtk::PageSetup& setup);

/// Enables or disables the menus of papers and of orientations.
void enablePageSetup(Gtk::PrintUnixDialog& dialog, bool isLive);

}  // namespace tandemtrim::host
