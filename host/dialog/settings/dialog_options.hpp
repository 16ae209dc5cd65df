#pragma once

#include <gtkmm/printunixdialog.h>

#include "host/cups/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// What the dialog's own pages show: settings that GTK keeps for them, and the page setup; null leaves the
/// paper and its orientation to the printer.
struct Pages {
  Glib::RefPtr<Gtk::PrintSettings> settings;
  Glib::RefPtr<Gtk::PageSetup> setup;
};

/// What the dialog's pages show now.
Pages shownPages(Gtk::PrintUnixDialog& dialog);

/// Has the pages show what a job with these options does. `ppd` is null for a printer without one.
void showOptions(const Options& options, ppd_file_t* ppd, Pages& pages);

/// Has the dialog's rows show this page setup, once its printer is selected.
void showPageSetup(Gtk::PrintUnixDialog& dialog, const Gtk::PageSetup& setup);

/// Those of GTK's rows for the printer's options that show one of these options, as they show it. GTK prefers
/// what the person saved for a printer to what it is told to show.
Options shownRows(const Pages& pages, const Options& options);

/// Puts what the person asks for on the pages into the options, in the place of what these said of it; rows
/// that still show what is in `untouched` say nothing. Failure when pages are to be chosen and none is. `ppd`
/// is null for a printer without one, and `usual` the paper that the printer takes of itself, or null.
void takeOptions(const Pages& pages, ppd_file_t* ppd, const GtkPaperSize* usual, const Options& untouched,
                 Options& options);

}  // namespace tandemtrim::host
