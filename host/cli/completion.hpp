#pragma once

#include <string>
#include <vector>

#include "host/cli/arguments/command_line_parser.hpp"

namespace tandemtrim::host {

/// The words that may complete the last one of an unfinished command line: options, printers, presets,
/// settings of the printer's panel and their choices. Empty for a file or a free text, and when the server or
/// the panel cannot be asked. The user is not asked for a password. The program ends within two seconds,
/// since the user waits at the keyboard.
std::vector<std::string> completions(const Unfinished& unfinished);

}  // namespace tandemtrim::host
