#pragma once

#include <map>
#include <string>
#include <vector>

#include <gtk/gtkunixprint.h>
#include <gtkmm/printunixdialog.h>

#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/settings/tab_settings.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// GTK's own tabs of its print dialog, with rows for the options of the selected printer.
class OwnTabs {
 public:
  explicit OwnTabs(Gtk::PrintUnixDialog& dialog) : dialog_(dialog) {}

  [[nodiscard]] TabSettings settings();
  /// Overwrites `options` with the choices of the tabs for this printer; rows that are unchanged since
  /// rememberRows() are skipped. Failure as for addTabOptions().
  void addOptions(GtkPrinter* printer, ppd_file_t* ppd, Options& options);
  /// Failure for page ranges that cannot be understood, and when page ranges are chosen but none is typed.
  void refuseWrongPages();
  /// Like addOptions(), but adds the paper even if it is the printer's default.
  void addAllOptions(ppd_file_t* ppd, Options& options);
  /// Shows these options, as if the user had chosen them. Returns those that the tabs show with another
  /// value, since the printer has no such choice.
  Options showOptions(const Options& options, ppd_file_t* ppd);
  /// Remembers the rows that show these options, before the user changes any.
  void rememberRows(const Options& options) { untouched_ = rowsShowing(settings(), options); }
  void forgetRows() { untouched_.clear(); }

  /// Stores what the tabs show for the printer that the user leaves.
  void leave(const std::string& printer) { left_[printer] = settings(); }
  /// What the tabs showed when the user left this printer; null parts for a printer that the user has not
  /// left yet.
  [[nodiscard]] TabSettings leftAt(const std::string& printer) const;
  /// Shows these settings, except in the rows of the present printer; the rows of the next one will show
  /// them.
  void show(const Glib::RefPtr<Gtk::PrintSettings>& settings) { dialog_.set_settings(settings); }

  /// Hides the rows for these keywords of the PPD.
  void hideRows(ppd_file_t& ppd, const std::vector<std::string>& keywords);
  /// Makes the dialog as wide as its rows need, up to a limit. To be called for each printer, as GTK makes
  /// new rows.
  void fitWidth();

 private:
  // GTK's entry for the pages to print.
  GtkEditable* pagesEntry();

  Gtk::PrintUnixDialog& dialog_;
  Options untouched_;
  std::map<std::string, TabSettings> left_;
};

}  // namespace tandemtrim::host
