#include "host/dialog/file/file_target.hpp"

#include <algorithm>

#include <gtk/gtk.h>

#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {

// GTK names no format when it offers only one.
FileTarget fileTargetOf(const Gtk::PrintSettings& settings, const std::vector<FileFormat>& offered) {
  if (settings.get_print_pages() != Gtk::PrintPages::ALL || settings.get_page_set() != Gtk::PageSet::ALL ||
      settings.get_number_up() > 1)
    throw Failure(Trouble::userMessage, Fact(FactText{kWholeFileText}, {}));
  const auto name = settings.get(GTK_PRINT_SETTINGS_OUTPUT_FILE_FORMAT).raw();
  const auto chosen = std::ranges::find(offered, name, nameOf);
  return {settings.get(GTK_PRINT_SETTINGS_OUTPUT_URI), chosen == offered.end() ? offered.front() : *chosen};
}

}  // namespace tandemtrim::host
