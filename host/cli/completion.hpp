#pragma once

#include <string>
#include <vector>

#include "host/cli/arguments/command_line_parser.hpp"

namespace tandemtrim::host {

/// The words that may stand for the last one of an unfinished command line: options, printers, settings of
/// the printer's panel and their choices. None where a file or a text of the user's own stands, and where the
/// server or the panel cannot be asked. Nobody is asked for a password. The program ends in two seconds, so
/// that a user at a key is not held up.
std::vector<std::string> completions(const Unfinished& unfinished);

}  // namespace tandemtrim::host
