#pragma once

#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "host/cups/connection/cups_handles.hpp"

namespace tandemtrim::host {

/// Hides the rows that GTK made in its dialog for these option keywords of the PPD, and the pages that are
/// left without a row, so that each setting of a panel is shown once.
void hideOptionRows(GtkWidget* dialog, ppd_file_t& ppd, const std::vector<std::string>& keywords);

/// The row that GTK made in its dialog for this option keyword of the PPD, or null. Always null for a null
/// `ppd`.
GtkWidget* optionRow(GtkWidget* dialog, ppd_file_t* ppd, const std::string& keyword);

/// Has each menu of the dialog shorten a long value by "…" when there is too little room.
void shortenMenuValues(GtkWidget* dialog);

}  // namespace tandemtrim::host
