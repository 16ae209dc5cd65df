#pragma once

#include <string>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// What a command line may be for, of which not every option is a part.
enum class Use : unsigned {
  /// Listing the printers.
  list = 1,
  /// Taking a printer's defaults away.
  reset = 2,
  /// The print dialog, because the command line asks for it.
  dialog = 4,
  /// The print dialog, because there is a screen.
  dialogUnasked = 8,
  /// Printing what comes on standard input where no file is named.
  input = 16,
  /// Switching for the applications of the session.
  applications = 32,
  /// Listing or deleting presets.
  presets = 64
};

/// The options of the command line that have no part in this use, as "-d, --json"; empty without any.
std::string optionsBeside(const CommandLine& line, Use use);

}  // namespace tandemtrim::host
