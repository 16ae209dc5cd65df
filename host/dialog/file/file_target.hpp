#pragma once

#include <vector>

#include <gtkmm/printsettings.h>

#include "host/dialog/file/saved_file.hpp"

namespace tandemtrim::host {

/// The file that GTK's tabs name, where these formats were offered.
FileTarget fileTargetOf(const Gtk::PrintSettings& settings, const std::vector<FileFormat>& offered);

}  // namespace tandemtrim::host
