#pragma once

#include <string>
#include <variant>
#include <vector>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// What --help and --version ask to be shown instead of any work.
struct Information {
  std::string text;
};

/// Reads the arguments behind the program's name. `hasInput` says whether standard input holds a document,
/// which is printed when no file is named and a job may be meant. Failure with the status of a wrong command
/// line.
std::variant<CommandLine, Information> parseCommandLine(std::vector<std::string> arguments,
                                                        bool hasInput = false);

/// The names of all options, with their dashes.
std::vector<std::string> optionNames();

}  // namespace tandemtrim::host
