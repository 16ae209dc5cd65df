#pragma once

#include <string>

#include "host/job/command_line.hpp"

namespace tandemtrim::host {

/// The purposes of a command line, not all of which fit every option.
enum class Use : unsigned {
  /// Listing the printers.
  list = 1,
  /// Removing the user's defaults for a printer.
  reset = 2,
  /// The print dialog, because the command line requires it.
  dialog = 4,
  /// The print dialog, because there is a screen.
  dialogUnasked = 8,
  /// Printing standard input, because no file is named.
  input = 16,
  /// Switching the portal for the session's applications.
  applications = 32,
  /// Listing or deleting presets.
  presets = 64
};

/// The options of the command line that do not fit this use, like "-d, --json"; empty when all fit.
std::string optionsBeside(const CommandLine& line, Use use);

}  // namespace tandemtrim::host
