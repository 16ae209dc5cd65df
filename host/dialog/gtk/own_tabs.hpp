#pragma once

#include <string>
#include <vector>

#include <gtk/gtkunixprint.h>
#include <gtkmm/printunixdialog.h>

#include "host/cups/cups_handles.hpp"
#include "host/dialog/settings/tab_settings.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// GTK's own tabs of its print dialog, with rows for the options of the selected printer.
class OwnTabs {
 public:
  explicit OwnTabs(Gtk::PrintUnixDialog& dialog) : dialog_(dialog) {}

  [[nodiscard]] TabSettings settings();
  /// Overwrites `options` with what the tabs show for this printer. A row that nobody changed since the tabs
  /// were asked to show the options leaves its option as it is. Failure when pages are to be chosen and none
  /// is.
  void addOptions(GtkPrinter* printer, ppd_file_t* ppd, Options& options);
  /// The rows that show these options show them as nobody changed them yet.
  void startFrom(const Options& options) { untouched_ = rowsShowing(settings(), options); }
  /// All rows count as changed.
  void forgetStart() { untouched_.clear(); }

  /// Hides the rows for these keywords of the PPD; without a PPD (null) there are none.
  void hideRows(ppd_file_t* ppd, const std::vector<std::string>& keywords);
  /// Makes the dialog as wide as its rows like, up to a limit. GTK makes new rows for each printer.
  void fitWidth();

 private:
  Gtk::PrintUnixDialog& dialog_;
  // The rows that show an option of the command line, before the user changed any.
  Options untouched_;
};

}  // namespace tandemtrim::host
