#pragma once

#include <vector>

#include <gtkmm/printsettings.h>

#include "host/dialog/file/saved_file.hpp"

namespace tandemtrim::host {

/// The file and format that GTK's tabs name, when these formats were offered.
FileTarget fileTargetOf(const Gtk::PrintSettings& settings, const std::vector<FileFormat>& offered);

}  // namespace tandemtrim::host
