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

/// The dialog's two tabs for the printer's panel: its page and its summary. The panel works on settings of
/// its own for each printer: margins that suit one need not suit another. A panel that fails is closed,
/// its page is hidden, and the dialog goes on.
class PanelTabs : public sigc::trackable {
 public:
  struct Events {
    /// The panel has failed; it is closed.
    std::function<void(const Failure&)> onFailure;
    /// The user asks for the panel's help, which is this text.
    std::function<void(const std::string&)> onHelp;
    /// What the job asks for beside the panel's options; none while a tab has a choice that cannot be
    /// printed.
    std::function<std::optional<Options>()> otherOptions;
    /// The same with what the server adds to it.
    std::function<std::optional<Options>()> optionsOfServer;
    /// The document, opened once more; not open where there is none with pages.
    std::function<FileDescriptor()> openDocument;
    /// What the row of presets does.
    PresetRow::Events presets;
    /// Whether a change of the settings shows in that row.
    std::function<bool()> isPresetChosen;
  };

  /// `plugin` is what bundleOfPrinter() takes.
  PanelTabs(Gtk::PrintUnixDialog& dialog, std::optional<std::string> plugin, Report report, Events events);
  PanelTabs(const PanelTabs&) = delete;
  PanelTabs& operator=(const PanelTabs&) = delete;
  ~PanelTabs();

  /// Shows a line of text in place of a panel.
  void showText(const std::string& text);
  void hide() { page_.set_visible(false); }

  /// Finds the bundle with the panel of a printer with this PPD, or without one (null). False when it fails.
  bool findBundle(ppd_file_t* ppd);
  /// Whether the printer has a panel, open or not.
  [[nodiscard]] bool hasBundle() const { return bundle_.has_value(); }
  /// Opens the panel of the bundle, where what nobody chose has the defaults of the PPD (null has none), of
  /// the printer's queue and of the panel. False when it fails.
  bool open(ppd_file_t* ppd, const Options& queueDefaults);
  /// Saves what the panel shows and closes it, before another printer is shown.
  void leavePrinter(const std::string& printer);
  /// Closes the panel and hides its page for this reason.
  void fail(const Failure& failure);

  [[nodiscard]] bool isOpen() const { return session_ != nullptr; }
  /// Whether the printer's panel is missing though it has one, or may have one.
  [[nodiscard]] bool hasFailed() const { return hasFailed_; }
  /// The option keywords that no other tab shows or sends: those of the printer's panel or, without one, of
  /// all panels that are installed.
  [[nodiscard]] std::vector<std::string> keywords() const;
  /// Stores the options that the panel of this printer starts from, those that count more behind the others;
  /// for a printer that the user comes back to, what it was left with instead.
  void startFrom(const std::string& printer, const std::vector<Options>& options);
  /// Shows these options, those of them that are the panel's; the others stay as they are.
  void show(const Options& options);
  /// The panel's options as it shows them.
  [[nodiscard]] Options shownOptions();
  /// Shows the row of presets as it is now.
  void updatePresets();
  /// The name of the bundle with the printer's panel, by which its presets are kept; none without a bundle.
  [[nodiscard]] std::optional<std::string> family() const;
  /// The panel's options, as saved last.
  [[nodiscard]] Options options() const { return storedOptions(settings_, keywords()); }
  /// The keywords of defaults that go as they stand, though the printer does not allow them. Kept for other
  /// jobs, they would count as chosen.
  [[nodiscard]] std::vector<std::string> illegalDefaults();
  [[nodiscard]] bool useForAllJobs() const { return isOpen() && page_.useForAllJobs.get_active(); }

  /// Whether the desktop is to tell what became of the job.
  [[nodiscard]] bool notifies() const { return page_.notify.get_active(); }
  void setNotifies(bool notifies) { page_.notify.set_active(notifies); }
  /// What the panel says of its settings, as saved last; empty without a panel and from one that fails.
  PanelResult words();

  /// Saves what the panel shows and gives the values that the user chose and the printer does not allow. None
  /// when the panel refuses to print or fails.
  std::optional<std::vector<IllegalValue>> prepareToPrint();
  /// What the PPD does not allow together with the panel's settings, as saved last.
  std::vector<Conflict> conflicts();
  /// Replaces illegal values by the nearest legal ones.
  void correct();
  /// Shows the paper and the document's page as they are chosen now.
  void updateSheet();
  /// There is another document.
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
  // What the panels of printers were left with.
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
