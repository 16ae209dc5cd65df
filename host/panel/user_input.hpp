#pragma once

#include <set>
#include <string>
#include <vector>

#include "adapters/memory/panel_view.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"
#include "platform/extension.hpp"

namespace tandemtrim::host {

/// The names of the settings that inputs changed.
struct Edits {
  std::set<std::string> all;
  /// Those of them that got their default back.
  std::set<std::string> restored;
};

/// Acts on the panel's view as the command line's inputs say, in their order, and reports each text that the
/// panel corrected. Failure for an unknown name or value and, unless the command line is lenient, for a
/// number of anything but digits (status of a wrong command line), and for a control that is greyed.
Edits enterInputs(platform::memory::PanelView& view, const std::vector<platform::PanelSetting>& settings,
                  const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
