#pragma once

#include <gtk/gtk.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The result of showing an option in GTK's row for it.
enum class RowShows {
  theValue,
  /// The printer has no such choice; the row is unchanged.
  anotherValue,
  /// No row can show the option.
  noRow
};

/// Shows the option's value in the row that GTK made for it in its dialog. `ppd` is null for a printer
/// without one.
RowShows showInRow(GtkWidget* dialog, ppd_file_t* ppd, const Option& option);

}  // namespace tandemtrim::host
