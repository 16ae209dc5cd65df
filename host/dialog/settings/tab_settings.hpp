#pragma once

#include <gtkmm/pagesetup.h>
#include <gtkmm/printsettings.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// What the tabs of GTK's print dialog show, in GTK's own form.
struct TabSettings {
  Glib::RefPtr<Gtk::PrintSettings> settings;
  /// Null leaves the paper and its orientation to the printer.
  Glib::RefPtr<Gtk::PageSetup> setup;
};

/// Changes the tabs' settings so that they show what a job with these options does. `ppd` is null for a
/// printer without one.
void applyOptions(const Options& options, ppd_file_t* ppd, TabSettings& tabs);

/// Those of GTK's rows for the printer's options that show one of these options, with the values that they
/// show. GTK prefers what the user saved for a printer to what it is given.
Options rowsShowing(const TabSettings& tabs, const Options& options);

/// Overwrites `options` with the choices of the tabs; rows equal to `untouched` are skipped. Failure when
/// pages are to be chosen and none is. `ppd` is null for a printer without one; `printersPaper` is the paper
/// that the printer takes unless a job names one, or null.
void addTabOptions(const TabSettings& tabs, ppd_file_t* ppd, const GtkPaperSize* printersPaper,
                   const Options& untouched, Options& options);

}  // namespace tandemtrim::host
