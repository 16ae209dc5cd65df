#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/failure.hpp"
#include "host/presets/preset.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The presets of a family of printers, which is named after its panel's bundle. Each preset is a JSON file
/// named after it: the user's below $XDG_CONFIG_HOME/tandem-trim, the administrator's below each of
/// $XDG_CONFIG_DIRS. Each file is replaced as a whole, by one program at a time.

struct KeptPreset {
  Preset preset;
  /// Whether it is the user's; the administrator's are read-only.
  bool isOwn = true;

  friend bool operator==(const KeptPreset&, const KeptPreset&) = default;
};

/// A file without a usable preset, or a folder that cannot be read completely.
struct PresetFault {
  /// The name that its preset would have; empty for a folder.
  std::string name;
  std::filesystem::path file;
  /// The message about it.
  Fact fact;
  /// Whether its content is not a preset; otherwise it cannot be read at present, and may be good.
  bool isDamaged;
  bool isOwn;
};

struct KeptPresets {
  /// In the order of their names.
  std::vector<KeptPreset> presets;
  std::vector<PresetFault> faults;
};

/// The folders of the administrator's presets: below each absolute path of $XDG_CONFIG_DIRS, or below
/// /etc/xdg. A preset in an earlier folder hides those of its name in later ones.
std::vector<std::filesystem::path> administratorsFolders(const std::string& family);

/// The family's presets; the user's hides the administrator's of the same name.
KeptPresets presetsOf(const std::string& family);

/// Returns the message about the fault; nullopt if another program has replaced or renamed the file in the
/// meantime. Renames the user's damaged file first: appends ".damaged", with a number if that name exists, so
/// that the file is reported once and never lost.
std::optional<Fact> setAside(const PresetFault& fault);

/// Finds the preset of this name. Reports all faults of the user's files and sets the damaged ones aside; of
/// the administrator's files, reports only faulty ones of this name. Failure, which lists the existing
/// presets, when there is none.
Preset findPreset(const std::string& family, const std::string& name, const Report& report);

/// Stores the preset, replacing the user's of the same name. Failure when no preset can have its name, or the
/// file cannot be written.
void savePreset(const std::string& family, const Preset& preset);

/// The same, but only while the user's preset of that name equals `known` or does not exist. Returns false,
/// and changes nothing, when another program has saved a different one.
[[nodiscard]] bool savePresetOver(const std::string& family, const std::optional<Preset>& known,
                                  const Preset& preset);

/// The preset that the user wants the dialog to start with on this printer, or nullopt. A printer's key is
/// any text that identifies it.
std::optional<std::string> presetOfPrinter(const std::string& family, const std::string& printersKey);

/// Sets that preset, or removes it. Failure when the file cannot be written.
void setPresetOfPrinter(const std::string& family, const std::string& printersKey,
                        const std::optional<std::string>& name);

/// Deletes the user's preset. On printers where the dialog starts with it, it then starts without one.
/// Failure when no preset has this name, when it is the administrator's, and when a file cannot be changed.
void deletePreset(const std::string& family, const std::string& name, const Report& report);

/// How to treat a preset that the user already has under the new name.
enum class Taken { refuses, isReplaced };

/// Renames the user's preset, also where the dialog starts with it on a printer. Failure as for
/// deletePreset(), for a name that no preset can have, and when the new name exists and `taken` refuses that.
void renamePreset(const std::string& family, const std::string& name, const std::string& newName, Taken taken,
                  const Report& report);

/// Failure for a name that no preset can have: an empty or blank one, one with control characters or invalid
/// UTF-8, and one too long for the name of a file.
void refuseWrongPresetName(const std::string& name);

/// The user's file for the preset. Every name stays within the folder.
std::filesystem::path presetFile(const std::string& family, const std::string& name);

}  // namespace tandemtrim::host
