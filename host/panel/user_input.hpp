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
  /// Those whose default was restored.
  std::set<std::string> restored;
};

/// Enters the command line's inputs into the panel's view, in their order, and reports each text that the
/// panel corrected. Failure for an unknown name or value and, without --lenient, for a text in a number's box
/// that is neither all digits nor a legal value (status of a wrong command line), and for a control that is
/// greyed.
Edits enterInputs(platform::memory::PanelView& view, const std::vector<platform::PanelSetting>& settings,
                  const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
