#pragma once

#include <optional>
#include <string>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Settings of a job under a name that the user gave them.
struct Preset {
  std::string name;
  /// The panel's settings, by the PPD's keywords.
  Options panel;
  /// Other options of the job; what it does not name stays as it is.
  Options options;

  friend bool operator==(const Preset&, const Preset&) = default;
};

/// The preset's settings as readable JSON.
std::string presetText(const Preset& preset);

/// The preset of this name with the settings of that JSON, but for what is chosen for one job. Failure, with
/// the reason, when the text is none.
Preset presetFrom(const std::string& name, const std::string& text);

/// JSON that names a preset, and the name in it; none where there is none.
std::string textNamingPreset(const std::string& name);
std::optional<std::string> presetNamedIn(const std::string& text);

}  // namespace tandemtrim::host
