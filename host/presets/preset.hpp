#pragma once

#include <optional>
#include <string>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A job's settings under a name that the user chose.
struct Preset {
  std::string name;
  /// The panel's settings, by the PPD's keywords.
  Options panel;
  /// Other options of the job. The preset does not change options that it lacks.
  Options options;

  friend bool operator==(const Preset&, const Preset&) = default;
};

/// The preset's settings as readable JSON.
std::string presetText(const Preset& preset);

/// The preset of this name with the settings from that JSON, except those that concern a single job. Failure,
/// with the reason, when the text is not a preset.
Preset presetFrom(const std::string& name, const std::string& text);

/// JSON that names a preset.
std::string textNamingPreset(const std::string& name);
/// The name in such JSON; nullopt if the text names no preset.
std::optional<std::string> presetNamedIn(const std::string& text);

}  // namespace tandemtrim::host
