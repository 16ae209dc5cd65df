#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/command_line.hpp"
#include "host/note.hpp"
#include "host/plugin_loader.hpp"
#include "platform/extension.hpp"
#include "platform/linux/print_settings.hpp"
#include "platform/memory/panel_view.hpp"
#include "platform/print_settings.hpp"

namespace tandemtrim::host {

struct SummaryRow {
  std::string title;
  std::string value;
};

/// What a setting's control allows.
struct SettingLimits {
  /// The control's name ("Top") and the option keyword that it sets ("MVTopMargin").
  std::string name;
  std::string keyword;
  /// Of a number; none for a setting that is chosen.
  std::optional<double> min;
  std::optional<double> max;
  /// Of a setting that is chosen; else empty.
  std::vector<std::string> choices;
};

/// A stored value that the printer does not allow.
struct IllegalValue {
  /// What the panel calls the setting, in the person's language: the label before its control without the
  /// colon, or a check box's title; the control's name when it has neither.
  std::string label;
  std::string keyword;
  std::string value;
  /// Its control, which says what is allowed, and the nearest value that is.
  platform::memory::ControlState control;
  std::string suggested;
};

/// What a panel left behind when it was closed.
struct PanelResult {
  /// In display order.
  std::vector<SummaryRow> summary;
  std::vector<SettingLimits> limits;
};

/// Plays the host's part for the plug-in's panel: shows it, lets the person's inputs act on it in their
/// order, has it save into `settings` and takes its summary. `ppd` may be null; `force` lets stored values
/// through that the controls do not allow.
///
/// Failure when an input names no control or nothing that the control takes (status of a wrong command line),
/// when the control is greyed, and when a stored value is not allowed. PluginFailure when the panel does not
/// do its part. `settings` then hold what they hold.
PanelResult playPanel(const LoadedPlugin& plugin, platform::PrintSettings& settings, ppd_file_s* ppd,
                      const std::vector<Input>& inputs, bool force, const Note& note);

/// The rows of a panel's summary in display order; in that of their titles when it gives none.
std::vector<SummaryRow> orderedSummary(const platform::Dictionary& summary);

/// The values among the settings that the panel's controls do not allow for the printer of this PPD, which
/// may be null. `plugin` is that of the module without a screen; `settings` stay as they are. PluginFailure
/// when the panel does not do its part.
std::vector<IllegalValue> illegalValues(const LoadedPlugin& plugin,
                                        const platform::linux::PrintSettings& settings, ppd_file_s* ppd);

}  // namespace tandemtrim::host
