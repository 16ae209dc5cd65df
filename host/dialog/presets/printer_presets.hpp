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
#include "host/panel/panel_session.hpp"
#include "host/presets/preset_folders.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The presets of the chosen printer's family: what the user chose of them, and what the row above the panel
/// does with them. A preset has the panel's settings and, if the user wants, those of the dialog's other
/// pages.
class PrinterPresets {
 public:
  struct Settings {
    /// The panel's settings as it shows them now.
    std::function<Options()> ofPanel;
    /// Those of the other pages, but for what is of the one document. Failure where that cannot be said.
    std::function<Options()> ofPages;
    /// Has the panel show those of these that are its own; the others stay.
    std::function<void(const Options&)> showOnPanel;
    /// Has the other pages show these; gives those that the printer does not allow, which are not shown.
    std::function<std::vector<IllegalValue>(const Options&)> showOnPages;
    /// Gives up a press of Print that waits: the user is to see something before.
    std::function<void()> holdPrint;
    /// Shows the row as it is now.
    std::function<void()> update;
  };

  /// `wanted` is the preset that the first printer with presets begins with, whatever its own is.
  PrinterPresets(Gtk::Window& parent, std::optional<std::string> wanted, Report report, Settings settings);

  /// Changes over to a printer of this family. `printersKey` is its own among all printers.
  void open(const std::string& family, const std::string& printersKey);
  /// Changes over to a printer that has no presets.
  void close();
  /// The preset that the user wants on this printer, unless the user has been there in this dialog.
  std::optional<Preset> begin();
  /// Shows the other pages' settings of the preset that begin() gave, once they are there for this printer;
  /// what is asked for otherwise stays. False where nothing is left to show.
  bool showPages(const Options& asked);
  /// What the chosen preset asks for on the other pages, shown or not. A preset that the printer begins with
  /// leaves alone what is asked for otherwise.
  [[nodiscard]] Options options(const Options& asked) const;
  [[nodiscard]] PresetRow::Events events();
  /// Whether a preset is chosen, so that a change of the settings shows.
  [[nodiscard]] bool isChosen() const { return chosen_.contains(printersKey_); }
  /// What there is to show now. Damaged files of the user's are set aside and told in a message.
  [[nodiscard]] PresetList list();

 private:
  struct Chosen {
    std::string family;
    // As it was chosen or saved last.
    Preset preset;
    // Whether the user chose it here, or the printer begins with it.
    bool isByHand = false;
    // The keywords of its options that the printer does not allow.
    std::vector<std::string> refused = {};
    // What the other pages showed then; none before, and where it has no settings for them.
    std::optional<Options> pages = {};
  };

  void tell(const std::vector<Fact>& facts);
  void choose(const std::string& name);
  void show();
  void showOptions(const Options& options);
  // Replaces the preset of that name or, where that refuses, `known` at most. False where it does not.
  bool save(const std::string& name, bool withPages, Taken taken, const std::optional<Preset>& known);
  void saveChanges();
  void saveAs(const NameWindow::Answer& answer);
  void rename(const std::string& name);
  // Whether it is the preset of this name; there may be others of that name for other families.
  [[nodiscard]] bool isChosenOf(const Chosen& chosen, const std::string& name) const {
    return chosen.family == family_ && chosen.preset.name == name;
  }
  // Gives false where it refuses.
  using Replacement = std::function<bool(Taken)>;
  void replaceIfTaken(const std::string& name, const Replacement& act);
  void askToReplace(const char* question, const std::string& name, const Replacement& act);
  void renameTo(const std::string& newName, Taken taken);
  void remove();
  [[nodiscard]] Chosen& chosen() { return chosen_.at(printersKey_); }
  [[nodiscard]] const Preset& preset() const { return chosen_.at(printersKey_).preset; }
  [[nodiscard]] bool isChanged() const;
  [[nodiscard]] std::optional<Options> shownOnPages() const;
  // Runs it, shows why it fails, and updates the row.
  void tryTo(const std::function<void()>& act);

  const Report report_;
  const Settings settings_;
  NameWindow name_;
  Questions questions_;
  // Beside a question.
  Questions faults_;
  // None once it is chosen.
  std::optional<std::string> wanted_;
  std::string family_;
  std::string printersKey_;
  // By printer.
  std::map<std::string, Chosen> chosen_;
  std::map<std::string, bool> begun_;
  std::set<std::filesystem::path> toldFiles_;
  // Ends what waits to be told along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
