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

/// An unfinished command line, as far as it says what its last word may become.
struct Unfinished {
  /// Its server, user, printer, PPD and plug-in.
  CommandLine line;
  std::string lastWord;
  /// The option whose value the last word is or ends with, with its dashes; empty where it is none.
  std::string option;
  /// Where that value begins in the last word.
  std::size_t valueAt = 0;
  /// Whether the last word is the beginning of an option's name.
  bool isName = false;
};

/// Reads the words behind the program's name, the last of which is unfinished. What is wrong with the others
/// is passed over.
Unfinished parseUnfinished(std::vector<std::string> words);

/// The names of all options, with their dashes.
std::vector<std::string> optionNames();

}  // namespace tandemtrim::host
