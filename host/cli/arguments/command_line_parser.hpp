#pragma once

#include <string>
#include <variant>
#include <vector>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// The text that --help or --version shows.
struct Information {
  std::string text;
};

/// Reads the arguments after the program's name. `hasInput` says whether standard input has a document, which
/// is printed when no file is named and the options fit a job. Failure with the status of a wrong command
/// line.
std::variant<CommandLine, Information> parseCommandLine(std::vector<std::string> arguments,
                                                        bool hasInput = false);

/// An unfinished command line: all that the completions of its last word depend on.
struct Unfinished {
  /// Its server, encryption, user, printer, PPD and plug-in.
  CommandLine line;
  std::string lastWord;
  /// The option, with its dashes, that the last word gives a value to; empty if the word gives no value.
  std::string option;
  /// Where that value begins in the last word.
  std::size_t valueAt = 0;
  /// Whether the last word is the beginning of an option's name.
  bool isName = false;
};

/// Reads the words after the program's name, the last of which is unfinished. Mistakes in the others are
/// ignored.
Unfinished parseUnfinished(std::vector<std::string> words);

/// The names of all options, with their dashes.
std::vector<std::string> optionNames();

}  // namespace tandemtrim::host
