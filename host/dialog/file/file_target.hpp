#pragma once

#include <vector>

#include <gtkmm/printsettings.h>

#include "host/dialog/file/saved_file.hpp"

namespace tandemtrim::host {

/// The file that GTK's tabs name, where these formats were offered. Failure, with a text for the user, when
/// the tabs ask for less than the whole document as it is.
FileTarget fileTargetOf(const Gtk::PrintSettings& settings, const std::vector<FileFormat>& offered);

}  // namespace tandemtrim::host
