#pragma once

#include <string>
#include <vector>

namespace tandemtrim::host {

/// The words that may stand for the last of these, which follow the program's name on an unfinished command
/// line: options, printers, settings of the printer's panel and their choices. None where a file or a text of
/// the user's own stands, and where the server or the panel cannot be asked. Nobody is asked for a password,
/// and a server that stays silent is not waited for longer than a user may be at a key.
std::vector<std::string> completions(const std::vector<std::string>& words);

}  // namespace tandemtrim::host
