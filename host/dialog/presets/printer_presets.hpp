#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "host/dialog/asking/name_window.hpp"
#include "host/dialog/asking/questions.hpp"
#include "host/dialog/panel/preset_row.hpp"
#include "host/presets/preset_folders.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The presets of the chosen printer's family: what the user chose of them, and what the row above the panel
/// does with them. Of a preset the dialog shows the panel's settings; other options in it stay in it.
class PrinterPresets {
 public:
  struct Settings {
    /// The panel's settings as it shows them now.
    std::function<Options()> ofPanel;
    /// Has the panel show the preset's settings for it; what the preset does not name stays.
    std::function<void(const Preset&)> show;
    /// Shows the row as it is now.
    std::function<void()> update;
  };

  PrinterPresets(Gtk::Window& parent, Report report, Settings settings);

  /// Changes over to a printer of this family. `printersKey` is its own among all printers.
  void open(const std::string& family, const std::string& printersKey);
  /// The preset that the user wants on this printer, unless the user has been there in this dialog.
  std::optional<Preset> begin();
  [[nodiscard]] PresetRow::Events events();
  /// Whether a preset is chosen, so that a change of the settings shows.
  [[nodiscard]] bool isChosen() const { return chosen_.contains(printersKey_); }
  [[nodiscard]] PresetList list() const;

 private:
  void choose(const std::string& name);
  void save(const Preset& preset);
  void saveAs(const std::string& name);
  void rename(const std::string& name);
  void remove();
  [[nodiscard]] const Preset& chosen() const { return chosen_.at(printersKey_); }
  [[nodiscard]] bool isChanged() const;
  // Runs it, shows why it fails, and updates the row.
  void tryTo(const std::function<void()>& act);

  const Report report_;
  const Settings settings_;
  NameWindow name_;
  Questions questions_;
  std::string family_;
  std::string printersKey_;
  // By printer, as it was chosen or saved last.
  std::map<std::string, Preset> chosen_;
  std::map<std::string, bool> begun_;
};

}  // namespace tandemtrim::host
