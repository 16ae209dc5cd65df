#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tandemtrim::host {

/// The contents of the row of presets.
struct PresetList {
  std::vector<std::string> names;
  /// nullopt while no preset is chosen.
  std::optional<std::string> chosen;
  /// Whether the settings differ from those of the chosen preset.
  bool isChanged = false;
  /// Whether the chosen preset is the user's, who may change it.
  bool isOwn = false;
  /// Whether the dialog starts with the chosen preset on this printer.
  bool isPrinterDefault = false;
};

/// What the row calls the chosen preset, in the user's language.
std::string titleOf(const PresetList& list);

/// Which actions of the row's menu are possible; all others always are.
struct LivePresetActions {
  bool save;
  bool back;
  /// To rename and to delete.
  bool change;
  bool choosePrinters;

  friend bool operator==(const LivePresetActions&, const LivePresetActions&) = default;
};

LivePresetActions liveActions(const PresetList& list);

/// The text with which a menu shows exactly this name. A menu takes a single underscore for the mark of an
/// access key.
std::string unmarked(const std::string& name);

}  // namespace tandemtrim::host
