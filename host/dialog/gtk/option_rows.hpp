#pragma once

#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "host/cups/connection/cups_handles.hpp"

namespace tandemtrim::host {

/// Hides the rows that GTK made in its dialog for these option keywords of the PPD, and the pages that are
/// left without a row, so that each setting that a panel shows exists once.
void hideOptionRows(GtkWidget* dialog, ppd_file_t& ppd, const std::vector<std::string>& keywords);

/// The row that GTK made in its dialog for this option keyword of the PPD, or null. A null `ppd` has none.
GtkWidget* optionRow(GtkWidget* dialog, ppd_file_t* ppd, const std::string& keyword);

/// Makes each menu of the dialog end a long value in "…" where there is too little room.
void shortenMenuValues(GtkWidget* dialog);

}  // namespace tandemtrim::host
