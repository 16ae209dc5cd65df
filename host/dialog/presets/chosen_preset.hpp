#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/presets/preset.hpp"

namespace tandemtrim::host {

/// The preset that is chosen on a printer.
struct ChosenPreset {
  std::string family;
  /// As it was chosen or saved last.
  Preset preset;
  /// Whether the user chose it in this dialog, which otherwise started with it.
  bool isByHand = false;
  /// The keywords of its options that the printer does not allow.
  std::vector<std::string> refused = {};
  /// The options of the other pages when they were last made to show it, or it was last saved; nullopt until
  /// then, and if they were incomplete. Not used for a preset without settings for them.
  std::optional<Options> pages = {};
};

/// Its options for the other pages, except the refused ones. A preset that the dialog started with does not
/// override the options in `asked`.
Options optionsOf(const ChosenPreset& chosen, const Options& asked);

/// Whether the panel or the other pages show something else than the preset, as they always do if the printer
/// does not allow a part of it. The pages are compared with what they showed of the preset, because they
/// spell some options differently; nullopt when they are incomplete.
bool isChanged(const ChosenPreset& chosen, const Options& panel, const std::optional<Options>& pages);

}  // namespace tandemtrim::host
