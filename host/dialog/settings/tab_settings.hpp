#pragma once

#include <array>
#include <string>
#include <vector>

#include <gtk/gtk.h>
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

/// GTK's keys for settings that concern the document, not the printer.
inline constexpr std::array<const char*, 6> kKeysOfTheDocument{
    GTK_PRINT_SETTINGS_PRINT_PAGES, GTK_PRINT_SETTINGS_PAGE_RANGES, GTK_PRINT_SETTINGS_PAGE_SET,
    GTK_PRINT_SETTINGS_N_COPIES,    GTK_PRINT_SETTINGS_COLLATE,     GTK_PRINT_SETTINGS_SCALE};

/// The settings that the tabs show when the user changes from a printer where they show `now` to one for
/// which `kept`, or nothing (null), is remembered. Settings that concern the document, and those that the
/// command line sets (`asked`), stay as they are shown.
Glib::RefPtr<Gtk::PrintSettings> settingsOfNextPrinter(const Glib::RefPtr<Gtk::PrintSettings>& now,
                                                       const Glib::RefPtr<Gtk::PrintSettings>& kept,
                                                       const Options& asked);

/// Changes the tabs' settings so that they show these options. `ppd` is null for a printer without one.
void applyOptions(const Options& options, ppd_file_t* ppd, TabSettings& tabs);

/// What the tabs show once the details of the next printer are read: `now` with the page setup that is
/// remembered or, when nothing is remembered (null parts), with the options that are saved for the printer.
/// The options in `asked` stay as they are shown.
TabSettings tabsOfNextPrinter(const TabSettings& now, const TabSettings& remembered, const Options& saved,
                              const Options& asked, ppd_file_t* ppd);

/// Whether options of this keyword choose two-sided printing.
bool isDuplexKeyword(const std::string& keyword);

/// The option's value in each spelling that printers use; its own first.
std::vector<std::string> spellings(const Option& option);

/// Those of GTK's rows for the printer's options that show one of these options, with the values that they
/// show. The values may differ from those of the options, since GTK prefers the user's saved options for the
/// printer.
Options rowsShowing(const TabSettings& tabs, const Options& options);

/// Failure when this text of the entry for pages cannot be understood. An empty text passes; refuseNoPages()
/// refuses it.
void refuseWrongPages(const std::string& text);

/// Failure when the user prints only certain pages and names none.
void refuseNoPages(const Gtk::PrintSettings& settings);

/// Overwrites `options` with the choices of the tabs; rows equal to `untouched` are skipped. Failure as for
/// refuseNoPages(), and for a time to print at that cannot be understood. `ppd` is null for a printer without
/// one; `printersPaper` is the printer's default paper, or null.
void addTabOptions(const TabSettings& tabs, ppd_file_t* ppd, const GtkPaperSize* printersPaper,
                   const Options& untouched, Options& options);

}  // namespace tandemtrim::host
