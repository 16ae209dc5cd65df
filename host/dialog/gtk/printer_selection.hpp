#pragma once

#include <functional>
#include <string>

#include <gtk/gtkunixprint.h>
#include <gtkmm/printunixdialog.h>

#include "host/dialog/settings/tab_settings.hpp"

namespace tandemtrim::host {

/// The printer that is selected in the list of GTK's dialog.
class PrinterSelection {
 public:
  /// `onChoice` runs when the user chooses a printer, before GTK's tabs show it.
  PrinterSelection(Gtk::PrintUnixDialog& dialog, std::function<void(const std::string&)> onChoice);
  PrinterSelection(const PrinterSelection&) = delete;
  PrinterSelection& operator=(const PrinterSelection&) = delete;
  ~PrinterSelection();

  /// Null while none is selected.
  [[nodiscard]] GtkPrinter* printer() const;
  /// Empty while none is selected.
  [[nodiscard]] std::string name() const;
  /// Whether a printer is selected, not a file to print to.
  [[nodiscard]] bool isPrinter() const;
  /// Whether a file to print to is selected.
  [[nodiscard]] bool isFile() const;

  /// Selects the printer, shows these settings in the tabs, then calls `done`. A printer and pages that the
  /// user selects in the meantime stay selected. If the printer does not appear within about 20 seconds,
  /// `done` is called without it.
  void select(const std::string& printer, const TabSettings& tabs, const std::function<void()>& done);

 private:
  void show(const Glib::RefPtr<Gtk::PrintSettings>& settings);

  void onListSelection() const;

  Gtk::PrintUnixDialog& dialog_;
  std::function<void(const std::string&)> onChoice_;
  // The tabs' settings as they were shown last.
  Glib::RefPtr<Gtk::PrintSettings> shown_;
  sigc::connection selecting_;
};

}  // namespace tandemtrim::host
