#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/command_line.hpp"
#include "host/note.hpp"
#include "platform/memory/panel_view.hpp"

namespace tandemtrim::host {

/// The controls that stand for a setting each, from top to bottom: text boxes, menus and check boxes with a
/// name.
std::vector<platform::memory::ControlState> settingControls(const platform::memory::PanelView& view);

/// Acts on the view as the person's inputs say, in their order, and notes each text that the panel corrected.
/// Gives the names of the settings that the person has set anew. Failure for an unknown name or value (status
/// of a wrong command line) and for a control that is greyed.
std::set<std::string> act(platform::memory::PanelView& view, const std::vector<Input>& inputs,
                          const Note& note);

}  // namespace tandemtrim::host
