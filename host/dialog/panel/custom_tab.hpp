#pragma once

#include <string>

#include <gtkmm/label.h>
#include <gtkmm/printunixdialog.h>

namespace tandemtrim::host {

/// Adds the page before all custom tabs of the dialog; returns the label with its title.
Gtk::Label& addCustomTab(Gtk::PrintUnixDialog& dialog, Gtk::Widget& page, const std::string& title);

}  // namespace tandemtrim::host
