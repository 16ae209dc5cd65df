#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/dialog/dialog_window.hpp"
#include "host/dialog/gtk/own_tabs.hpp"
#include "host/dialog/gtk/printer_selection.hpp"
#include "host/dialog/panel/panel_tabs.hpp"
#include "host/dialog/presets/printer_presets.hpp"
#include "host/dialog/print_request.hpp"
#include "host/dialog/printer_details.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The printer that the user chose, with the tabs that show its settings. Until its details are read, a press
/// of Print waits.
class ChosenPrinter : public sigc::trackable {
 public:
  struct Events {
    /// The printer is ready, and Print was pressed before it was.
    std::function<void()> onReadyToPrint;
    /// The user wants help, which is this text.
    std::function<void(const std::string&)> onHelp;
    /// Opens the document again; the result is not open where there is no document with pages.
    std::function<FileDescriptor()> openDocument;
    /// Whether a program has yet to lay the document out.
    std::function<bool()> isToBeLaidOut;
  };

  /// `suggested` are settings that the tabs start with, in addition to those of the command line; may be
  /// null.
  ChosenPrinter(const CommandLine& line, Glib::RefPtr<Gtk::PrintSettings> suggested, const Report& report,
                const AskForLogin& ask, DialogWindow& window, Events events);
  ChosenPrinter(const ChosenPrinter&) = delete;
  ChosenPrinter& operator=(const ChosenPrinter&) = delete;
  ~ChosenPrinter() = default;

  /// Starts with the printer that the command line names, else with the user's default one. With `suggested`,
  /// a printer that does not exist also means the default one.
  void start();
  /// Changes to the printer that is selected now.
  void follow();
  /// Enables the menus of paper and orientation if they have an effect. To be called when there is a
  /// document, too.
  void enablePageSetup();
  [[nodiscard]] const PrinterSelection& selection() const { return selection_; }
  /// The printer's panel, which may be closed.
  [[nodiscard]] PanelTabs& panel() { return panel_; }
  /// The job with the settings that the tabs show. Failure when they are incomplete.
  [[nodiscard]] PrintRequest makeRequest();
  /// The settings that the tabs show.
  [[nodiscard]] TabSettings tabs() { return tabs_.settings(); }
  /// Failure for page ranges that cannot be understood, and when page ranges are chosen but none is typed.
  void refuseWrongPages() { tabs_.refuseWrongPages(); }

 private:
  [[nodiscard]] std::string destinationOf(const std::string& printer) const;
  using Outcome = host::Outcome<std::shared_ptr<PrinterDetails>>;

  void onFirstDetails(Outcome outcome);
  void onDetails(Outcome outcome);
  void onChoice(const std::string& printer);
  void changeTabs(const std::string& printer);
  void suggest(Gtk::PrintSettings& settings) const;
  void onPrinterChanged();
  void becomeReady();
  void startFromStoredSettings();
  // The panel's settings in the preset that the user wants on the printer.
  [[nodiscard]] Options panelOptionsOfPreset();
  void selectFirst(const Options& asked);
  void onSelected();
  void openPanel();
  void onPanelFailure(const Failure& failure);
  void hideRows();
  // The options that are saved, those of the command line, and those of the chosen preset.
  [[nodiscard]] Options optionsBesideTabs();
  // All options of the other pages, except those that concern a single job. Failure when they are incomplete.
  [[nodiscard]] Options optionsOfPages();
  // Shows the options on the pages; returns those that the printer does not allow, which are not shown.
  std::vector<IllegalValue> showOnPages(const Options& options);
  // The job's options except the panel's. Failure when the tabs' settings are incomplete.
  [[nodiscard]] Options otherOptions();
  // The same, but nullopt instead of a Failure.
  [[nodiscard]] std::optional<Options> otherOptionsIfComplete();
  // The same with the server's defaults added.
  [[nodiscard]] std::optional<Options> optionsOfServer();

  CommandLine line_;
  const Glib::RefPtr<Gtk::PrintSettings> suggested_;
  const Report report_;
  DialogWindow& window_;
  const Events events_;
  // Without a PPD and saved options while they are being read.
  PrinterDetails current_;
  // The destination that the dialog started with, which may be an instance; empty until one is known.
  std::string first_;
  // The printer whose settings GTK's tabs show, and the settings remembered for it.
  std::string tabsOf_;
  Remembered remembered_;
  PrinterSelection selection_;
  OwnTabs tabs_;
  PrinterPresets presets_;
  PanelTabs panel_;
  DetailsReader reader_;
};

}  // namespace tandemtrim::host
