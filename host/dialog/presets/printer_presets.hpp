#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/dialog/asking/name_window.hpp"
#include "host/dialog/asking/questions.hpp"
#include "host/dialog/panel/preset_row.hpp"
#include "host/dialog/presets/chosen_preset.hpp"
#include "host/panel/panel_session.hpp"
#include "host/presets/preset_folders.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The presets of the chosen printer's family: the chosen one, and the actions of the row above the panel. A
/// preset has the panel's settings and, if the user wants, those of the dialog's other pages.
class PrinterPresets {
 public:
  struct Settings {
    /// The panel's settings as it shows them now.
    std::function<Options()> ofPanel;
    /// Those of the other pages, except those that concern a single job. Failure when they are incomplete.
    std::function<Options()> ofPages;
    /// Shows those of the options that are the panel's; its other settings stay.
    std::function<void(const Options&)> showOnPanel;
    /// Shows the options on the other pages; returns those that the printer does not allow, which are not
    /// shown.
    std::function<std::vector<IllegalValue>(const Options&)> showOnPages;
    /// Gives up a press of Print that waits, so that the user sees a message first.
    std::function<void()> giveUpPrint;
    /// Shows the row as it is now.
    std::function<void()> update;
  };

  /// `wanted` is the preset to start with on the first printer, instead of that printer's own. A printer
  /// without this preset causes a message.
  PrinterPresets(Gtk::Window& parent, std::optional<std::string> wanted, Report report, Settings settings);

  /// Changes to a printer of this family. `printersKey` identifies it among all printers.
  void open(const std::string& family, const std::string& printersKey);
  /// Changes to a printer that has no presets.
  void close();
  /// Chooses and returns the preset that the user wants on this printer, if any; nullopt if the dialog has
  /// shown the printer before.
  std::optional<Preset> begin();
  /// Shows the other pages' settings of the preset that begin() returned, once the pages show this printer;
  /// the options in `asked` stay. False when nothing is left to show.
  bool showPages(const Options& asked);
  /// The chosen preset's options for the other pages, shown or not. A preset that the dialog started with
  /// does not override the options in `asked`.
  [[nodiscard]] Options options(const Options& asked) const;
  [[nodiscard]] PresetRow::Events events();
  /// Whether a preset is chosen, so that the row shows changes of the settings.
  [[nodiscard]] bool isChosen() const { return chosen_.contains(printersKey_); }
  /// The present contents of the row. Sets damaged files of the user aside and shows a message about them.
  [[nodiscard]] PresetList list();

 private:
  void showFaults(const std::vector<Fact>& facts);
  void choose(const std::string& name);
  void show();
  void showOptions(const Options& options);
  // Saves a preset. Where `taken` refuses, replaces only a preset of that name that equals `known`; false if
  // there is another.
  bool save(const std::string& name, bool withPages, Taken taken, const std::optional<Preset>& known);
  void saveChanges();
  void saveAs(const NameWindow::Answer& answer);
  void rename(const std::string& name);
  // Whether this is the present family's preset of this name; other families may have presets of the same
  // name.
  [[nodiscard]] bool isChosenOf(const ChosenPreset& chosen, const std::string& name) const {
    return chosen.family == family_ && chosen.preset.name == name;
  }
  // Returns false or throws a Failure, and changes nothing, if the name is taken and `Taken` refuses that.
  using Replacement = std::function<bool(Taken)>;
  void replaceIfTaken(const std::string& name, const Replacement& act);
  void askToReplace(const char* question, const std::string& name, const Replacement& act);
  void renameTo(const std::string& newName, Taken taken);
  void remove();
  [[nodiscard]] ChosenPreset& chosen() { return chosen_.at(printersKey_); }
  [[nodiscard]] const Preset& preset() const { return chosen_.at(printersKey_).preset; }
  [[nodiscard]] std::optional<Options> shownOnPages() const;
  // Runs `act`, shows its Failure, and updates the row.
  void tryTo(const std::function<void()>& act);

  const Report report_;
  const Settings settings_;
  NameWindow name_;
  Questions questions_;
  // For messages beside a question.
  Questions faults_;
  // nullopt after the first begin().
  std::optional<std::string> wanted_;
  std::string family_;
  std::string printersKey_;
  // Both by the printer's key.
  std::map<std::string, ChosenPreset> chosen_;
  std::map<std::string, bool> begun_;
  std::set<std::filesystem::path> reportedFiles_;
  // Messages that wait end together with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
