#pragma once

#include <gtkmm/printunixdialog.h>

#include "host/options.hpp"

namespace tandemtrim::host {

/// The job options that the dialog's own pages ask for: copies, page ranges, number-up, paper and whatever
/// rows the printer's PPD put there.
Options dialogOptions(Gtk::PrintUnixDialog& dialog, const std::string& title);

/// The dialog's settings for a job that starts with these options.
void showOptions(const Options& options, Gtk::PrintSettings& settings);

}  // namespace tandemtrim::host
