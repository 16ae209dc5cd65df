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
    /// The user asks for help, which is this text.
    std::function<void(const std::string&)> onHelp;
    /// The document, opened once more; not open where there is none with pages.
    std::function<FileDescriptor()> openDocument;
  };

  /// `suggested` are settings that the tabs begin with, beside those of the command line.
  ChosenPrinter(const CommandLine& line, Glib::RefPtr<Gtk::PrintSettings> suggested, const Report& report,
                const AskForLogin& ask, DialogWindow& window, Events events);
  ChosenPrinter(const ChosenPrinter&) = delete;
  ChosenPrinter& operator=(const ChosenPrinter&) = delete;
  ~ChosenPrinter() = default;

  /// Starts with the printer that the command line names, or with the user's default one, also where the
  /// printer is only suggested and does not exist.
  void start();
  /// Changes over to the printer that is selected now.
  void follow();
  [[nodiscard]] const PrinterSelection& selection() const { return selection_; }
  /// The printer's panel, which may be closed.
  [[nodiscard]] PanelTabs& panel() { return panel_; }
  /// The job with the settings that the tabs show. Failure when they are incomplete.
  [[nodiscard]] PrintRequest makeRequest();
  /// What the tabs show.
  [[nodiscard]] TabSettings tabs() { return tabs_.settings(); }
  /// Failure for pages that are none.
  void refuseWrongPages() { tabs_.refuseWrongPages(); }

 private:
  // What jobs for the printer are addressed to: the instance that the dialog started with, where it is one of
  // this printer.
  [[nodiscard]] std::string destinationOf(const std::string& printer) const;
  using Outcome = host::Outcome<std::shared_ptr<PrinterDetails>>;

  void onFirstDetails(Outcome outcome);
  void onDetails(Outcome outcome);
  void onChoice(const std::string& printer);
  void changeTabs(const std::string& printer);
  void suggest(Gtk::PrintSettings& settings) const;
  void onPrinterChanged();
  void becomeReady();
  void startFromKept();
  // The panel's settings in the preset that the user wants on the printer.
  [[nodiscard]] Options ofPreset();
  void selectFirst(const Options& asked);
  void onSelected();
  void openPanel();
  void onPanelFailure(const Failure& failure);
  void hideRows();
  // The options that are saved, asked for and chosen with a preset.
  [[nodiscard]] Options optionsBesideTabs();
  // All that the other pages show, but what is of the one document. Failure when it is incomplete.
  [[nodiscard]] Options optionsOfPages();
  // Gives those that the printer does not allow, which are not shown.
  std::vector<IllegalValue> showOnPages(const Options& options);
  // What the job asks for beside the panel's options. Failure when the tabs' settings are incomplete.
  [[nodiscard]] Options otherOptions();
  // The same, but none in place of a failure.
  [[nodiscard]] std::optional<Options> otherOptionsOrNone();
  // The same with what the server adds to it.
  [[nodiscard]] std::optional<Options> optionsOfServer();

  CommandLine line_;
  const Glib::RefPtr<Gtk::PrintSettings> suggested_;
  const Report report_;
  DialogWindow& window_;
  const Events events_;
  // Without a PPD and saved options while they are read.
  PrinterDetails current_;
  // The destination that the dialog started with, which may be an instance; empty until one is known.
  std::string first_;
  // The printer that GTK's tabs are for, and what is remembered for it.
  std::string tabsOf_;
  Remembered remembered_;
  PrinterSelection selection_;
  OwnTabs tabs_;
  PrinterPresets presets_;
  PanelTabs panel_;
  DetailsReader reader_;
};

}  // namespace tandemtrim::host
