#include "host/dialog/file/file_target.hpp"

#include <algorithm>

#include <gtk/gtk.h>

namespace tandemtrim::host {

// GTK names no format when it offers only one.
FileTarget fileTargetOf(const Gtk::PrintSettings& settings, const std::vector<FileFormat>& offered) {
  const auto name = settings.get(GTK_PRINT_SETTINGS_OUTPUT_FILE_FORMAT).raw();
  const auto chosen = std::ranges::find(offered, name, nameOf);
  return {settings.get(GTK_PRINT_SETTINGS_OUTPUT_URI), chosen == offered.end() ? offered.front() : *chosen};
}

}  // namespace tandemtrim::host
