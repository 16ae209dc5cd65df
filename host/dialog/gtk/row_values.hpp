#pragma once

#include <gtk/gtk.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// What became of an option that GTK's row for it was to show.
enum class RowShows {
  theValue,
  /// The printer has no such choice; the row is unchanged.
  anotherValue,
  /// No row can show the option.
  noRow
};

/// Has the row that GTK made in its dialog for this option show its value. `ppd` is null for a printer
/// without one.
RowShows showInRow(GtkWidget* dialog, ppd_file_t* ppd, const Option& option);

}  // namespace tandemtrim::host
