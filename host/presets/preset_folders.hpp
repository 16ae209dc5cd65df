#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/failure.hpp"
#include "host/presets/preset.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The presets of a family of printers, which is named after its panel's bundle. Each is a JSON file that
/// bears its name: the user's below $XDG_CONFIG_HOME/tandem-trim, the administrator's below each of
/// $XDG_CONFIG_DIRS. Each file is replaced as a whole, by one program at a time.

struct KeptPreset {
  Preset preset;
  /// Whether it is the user's, who alone may change it; the administrator's are read-only.
  bool isOwn = true;

  friend bool operator==(const KeptPreset&, const KeptPreset&) = default;
};

/// A file that gives no preset, or a folder that cannot be read to its end.
struct PresetFault {
  /// The name that its preset would have; empty for a folder.
  std::string name;
  std::filesystem::path file;
  /// What is wrong with it.
  Fact fact;
  /// Whether what it holds is no preset; else it cannot be read at present and may be whole.
  bool isDamaged;
  bool isOwn;
};

struct KeptPresets {
  /// In the order of their names.
  std::vector<KeptPreset> presets;
  std::vector<PresetFault> faults;
};

/// The family's presets; the user's hides the administrator's of the same name.
KeptPresets presetsOf(const std::string& family);

/// What there is to tell of the fault. The user's damaged file is renamed before, with ".damaged" and, where
/// that is taken, a number behind its name, so that it is told once and never lost. None where another
/// program has replaced or renamed the file meanwhile.
std::optional<Fact> setAside(const PresetFault& fault);

/// The preset of this name; all faults of the user's files are reported and set aside, and the
/// administrator's of this name are reported. Failure that names the presets that there are.
Preset findPreset(const std::string& family, const std::string& name, const Report& report);

/// Keeps the preset, in the place of the user's own of the same name. Failure when its name cannot be one and
/// when the file cannot be written.
void savePreset(const std::string& family, const Preset& preset);

/// The same only where the user's own of that name is still `known`, or where there is none. False where
/// another program has saved one meanwhile, which stays.
[[nodiscard]] bool savePresetOver(const std::string& family, const std::optional<Preset>& known,
                                  const Preset& preset);

/// The preset that the user wants the dialog to begin with on this printer; none where there is none. A
/// printer's key is any text that is its own.
std::optional<std::string> presetOfPrinter(const std::string& family, const std::string& printersKey);

/// Sets that preset, or none. Failure when the file cannot be written.
void setPresetOfPrinter(const std::string& family, const std::string& printersKey,
                        const std::optional<std::string>& name);

/// Removes the user's preset, for the printers that begin with it, too. Failure for a name that none has, and
/// for the administrator's.
void deletePreset(const std::string& family, const std::string& name, const Report& report);

/// What happens to the user's own preset that has the other name already.
enum class Taken { refuses, isReplaced };

/// Gives the user's preset another name, for the printers that begin with it, too. Failure as for
/// deletePreset(), and where the other name is taken and refuses.
void renamePreset(const std::string& family, const std::string& name, const std::string& newName, Taken taken,
                  const Report& report);

/// Failure for a name that no preset can have: an empty or blank one, one with control characters or what is
/// not UTF-8, and one too long for the name of a file.
void refuseWrongPresetName(const std::string& name);

/// The user's file of the preset. No name leads out of the folder.
std::filesystem::path presetFile(const std::string& family, const std::string& name);

}  // namespace tandemtrim::host
