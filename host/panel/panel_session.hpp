#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/job/command_line.hpp"
#include "host/panel/plugin_loader.hpp"
#include "host/report.hpp"
#include "platform/extension.hpp"

namespace tandemtrim::host {

struct SummaryRow {
  std::string title;
  std::string value;
};

/// A setting whose value this printer does not allow, and the nearest value that it allows.
struct IllegalValue {
  platform::PanelSetting setting;
  std::string suggested;
};

/// The rows of a panel's summary in display order; sorted by title when the summary has no order.
std::vector<SummaryRow> orderedSummary(const platform::Dictionary& summary);

/// The settings whose value is not allowed.
std::vector<IllegalValue> illegalValues(const std::vector<platform::PanelSetting>& settings);

/// A plug-in's panel for one printer and one job, as a host uses it. Every operation throws PluginFailure
/// when the panel fails.
class PanelSession {
 public:
  /// Opens the panel of the bundle's module with this ending. Settings that the job lacks get the printer's
  /// defaults or, without one, the panel's own. `settings` and `ppd` must outlive the session; `ppd` is null
  /// for a printer without one.
  PanelSession(const PluginBundle& bundle, const char* moduleEnding, platform::PrintSettings& settings,
               ppd_file_s* ppd, const Options& printersDefaults = {});

  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] const std::vector<std::string>& keywords() const { return keywords_; }
  [[nodiscard]] std::vector<platform::PanelSetting> settings() const;
  [[nodiscard]] bool shouldHide() const;
  [[nodiscard]] bool shouldShowHelp() const;
  [[nodiscard]] bool shouldPrint() const;

  /// The panel's view, which the first call loads and fills from the print settings.
  platform::View& view();
  void willShow();
  /// Shows the values of the print settings.
  void restore();
  /// Writes the controls' values into the print settings. A setting that the user has not edited keeps its
  /// stored value, even if its control cannot show that; those named in `edited` always count as edited.
  void save(const std::set<std::string>& edited = {});
  /// Saves, then replaces the user's values that the printer does not allow by the nearest legal ones and
  /// shows them.
  void correct();

  /// From now on treats the present values of these settings as defaults.
  void countAsDefaults(const std::set<std::string>& names);
  /// The user's values that the printer does not allow.
  [[nodiscard]] std::vector<IllegalValue> illegalChoices() const;
  /// The defaults that the printer does not allow.
  [[nodiscard]] std::vector<IllegalValue> illegalDefaults() const;
  /// While the panel's function is on, replaces the illegal defaults by the nearest legal values and shows
  /// them; returns what it replaced. The user's edits must be saved before.
  std::vector<IllegalValue> correctDefaults();
  /// Removes the defaults from the print settings.
  void removeDefaults();

  /// The summary of the saved values, in display order.
  [[nodiscard]] std::vector<SummaryRow> summary();

 private:
  using StoredValues = std::map<std::string, std::optional<std::string>>;
  [[nodiscard]] StoredValues storedValues() const;
  void store(const StoredValues& values) const;
  [[nodiscard]] std::unique_ptr<platform::PanelList> openWith(ppd_file_s* ppd);
  bool removeUnknownDefaults();
  void saveAll() const;
  void readUnedited();
  [[nodiscard]] bool isDefault(const IllegalValue& illegal) const;
  void replace(const std::vector<IllegalValue>& values);
  template <class Operation>
  auto call(const char* name, Operation operation) const {
    return callPlugin(plugin_.bundle, name, [&] { return operation(*panels_->front()); });
  }

  platform::PrintSettings& settings_;
  LoadedPlugin plugin_;
  // The values that the user did not choose. Within the constructor, at first those that the job already had.
  Options defaults_;
  std::unique_ptr<platform::PanelList> panels_;
  std::string title_;
  std::vector<std::string> keywords_;
  platform::View* view_ = nullptr;
  // The stored values that the controls last read, and the values that a save without edits would store.
  StoredValues stored_;
  StoredValues unedited_;
};

/// The outcome of a panel, as saved last.
struct PanelResult {
  /// In display order.
  std::vector<SummaryRow> summary;
  std::vector<platform::PanelSetting> settings;
  /// The keywords of defaults that are sent although the printer does not allow them. They are not stored for
  /// other jobs, where they would count as the user's choices.
  std::vector<std::string> illegalDefaults = {};
};

/// Opens the panel without a screen, enters the command line's inputs, has the panel save into `settings` and
/// returns the outcome. `ppd` may be null. While the panel's function is on, each default that the printer
/// does not allow is corrected and reported. --force lets all values pass.
///
/// Failure when --set names no setting or no value that the setting takes (status of a wrong command line),
/// when a control is greyed, and when a value that the user chose is not allowed. PluginFailure when the
/// panel fails. On failure `settings` may be partly changed.
PanelResult playPanel(const PluginBundle& bundle, platform::PrintSettings& settings, ppd_file_s* ppd,
                      const Options& printersDefaults, const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
