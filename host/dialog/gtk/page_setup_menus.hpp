#pragma once

#include <gtkmm/printunixdialog.h>

namespace tandemtrim::host {

/// Shows this page setup in the dialog, once its printer is selected.
void showPageSetup(Gtk::PrintUnixDialog& dialog, const Gtk::PageSetup& setup);

}  // namespace tandemtrim::host
