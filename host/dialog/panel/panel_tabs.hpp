#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtkmm/printunixdialog.h>

#include "adapters/linux/print_settings.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/panel/panel_page.hpp"
#include "host/dialog/panel/summary_tab.hpp"
#include "host/dialog/preview/page_preview.hpp"
#include "host/dialog/preview/placement.hpp"
#include "host/panel/panel_options.hpp"
#include "host/panel/panel_session.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The dialog's two tabs for the printer's panel: its page and its summary. The panel has separate settings
/// for each printer: margins that suit one need not suit another. A panel that fails is closed, its page is
/// hidden, and the dialog continues.
class PanelTabs : public sigc::trackable {
 public:
  struct Events {
    /// The panel has failed; it is closed.
    std::function<void(const Failure&)> onFailure;
    /// The user wants the panel's help, which is this text.
    std::function<void(const std::string&)> onHelp;
    /// The job's options except the panel's; nullopt while a tab has a choice that cannot be printed.
    std::function<std::optional<Options>()> otherOptions;
    /// The same with the server's defaults added.
    std::function<std::optional<Options>()> optionsOfServer;
    /// Opens the document again; the result is not open where there is no document with pages.
    std::function<FileDescriptor()> openDocument;
    /// The actions of the row of presets.
    PresetRow::Events presets;
    /// Whether that row shows changes of the settings.
    std::function<bool()> isPresetChosen;
  };

  /// `plugin` as for bundleOfPrinter().
  PanelTabs(Gtk::PrintUnixDialog& dialog, std::optional<std::string> plugin, Report report, Events events);
  PanelTabs(const PanelTabs&) = delete;
  PanelTabs& operator=(const PanelTabs&) = delete;
  ~PanelTabs();

  /// Shows a line of text instead of a panel.
  void showText(const std::string& text);
  void hide() { page_.set_visible(false); }

  /// Finds the bundle with the panel of a printer with this PPD, or without one (null). False when it fails.
  bool findBundle(ppd_file_t* ppd);
  /// Whether the printer has a panel, open or not.
  [[nodiscard]] bool hasBundle() const { return bundle_.has_value(); }
  /// Opens the panel of the bundle. Settings that nobody chose get the default of the printer's queue, of the
  /// PPD (`ppd` may be null) or of the panel. False when it fails.
  bool open(ppd_file_t* ppd, const Options& queueDefaults);
  /// Saves what the panel shows and closes it, before another printer is shown.
  void leavePrinter(const std::string& printer);
  /// Closes the panel because of this failure, hides its page and reports the failure.
  void fail(const Failure& failure);

  [[nodiscard]] bool isOpen() const { return session_ != nullptr; }
  /// Whether the panel is missing because it failed, or because the printer's details could not be read.
  [[nodiscard]] bool hasFailed() const { return hasFailed_; }
  /// The option keywords that no other tab shows or sends: those of the printer's panel or, without one, of
  /// all panels that are installed.
  [[nodiscard]] std::vector<std::string> keywords() const;
  /// Stores the options that the panel of this printer starts from; later ones override earlier ones. For a
  /// printer that the user returns to, the panel starts from the settings that were left there instead.
  void startFrom(const std::string& printer, const std::vector<Options>& options);
  /// Shows those of the options that are the panel's; its other settings stay as they are.
  void show(const Options& options);
  /// Saves what the panel shows and returns its options.
  [[nodiscard]] Options shownOptions();
  /// Updates the row of presets.
  void updatePresets();
  /// The name of the bundle with the printer's panel, by which its presets are kept; nullopt without a
  /// bundle.
  [[nodiscard]] std::optional<std::string> family() const;
  /// The panel's options, as saved last.
  [[nodiscard]] Options options() const { return storedOptions(settings_, keywords()); }
  /// The keywords of defaults that are sent although the printer does not allow them. They are not stored for
  /// other jobs, where they would count as the user's choices.
  [[nodiscard]] std::vector<std::string> illegalDefaults();
  [[nodiscard]] bool useForAllJobs() const { return isOpen() && page_.useForAllJobs.get_active(); }

  /// Whether the user wants a notification about the job.
  [[nodiscard]] bool notifies() const { return page_.notify.get_active(); }
  void setNotifies(bool notifies) { page_.notify.set_active(notifies); }
  /// The panel's summary and settings, as saved last; empty without a panel and when it fails.
  PanelResult result();

  /// Saves what the panel shows and returns the values that the user chose and the printer does not allow.
  /// nullopt if the panel refuses to print or fails.
  std::optional<std::vector<IllegalValue>> prepareToPrint();
  /// The conflicts of the panel's settings, as saved last, with the paper and by the PPD.
  std::vector<Conflict> conflicts();
  /// Replaces illegal values by the nearest legal ones.
  void correct();
  /// Shows the paper and the document's page as they are chosen now.
  void updateSheet();
  /// Called when there is another document.
  void forgetPage();

 private:
  Gtk::Label& addTabs();
  void close();
  void showPanel();
  void onPageShown();
  void onPageLeft();
  void onEdited();
  void showSummary();
  void showPaper();
  void showPage();
  std::string pageNote();
  void warn();
  [[nodiscard]] bool isConstrained() const;
  // As it is chosen in another tab.
  [[nodiscard]] Paper paper() const;
  [[nodiscard]] std::vector<Conflict> findConflicts() const;
  // Runs an operation of the panel. False when the panel fails.
  bool guarded(const std::function<void()>& operation);

  Gtk::PrintUnixDialog& dialog_;
  const std::optional<std::string> plugin_;
  const Report report_;
  const Events events_;
  platform::linux::PrintSettings settings_;
  // The settings of the panels of printers that the user has left.
  std::map<std::string, platform::linux::PrintSettings> left_;
  PanelPage& page_;
  SummaryTab& summary_;
  Gtk::Label& title_;
  std::optional<PluginBundle> bundle_;
  std::unique_ptr<PanelSession> session_;
  // The PPD of the session's printer, or null.
  ppd_file_t* ppd_ = nullptr;
  bool hasFailed_ = false;
  PagePreview preview_;
};

}  // namespace tandemtrim::host
