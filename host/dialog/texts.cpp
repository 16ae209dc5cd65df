#include "host/dialog/texts.hpp"

namespace tandemtrim::host {

const char* text(Text which) {
  switch (which) {
    case Text::correct:
      return "C_orrect";
    case Text::sendAsItIs:
      return "_Send As It Is";
    case Text::back:
      return "_Back";
    case Text::close:
      return "_Close";
    case Text::help:
      return "_Help";
    case Text::helpText:
      return "Turn Tandem Trim on to have the printer trim the sheet. The margins are whole millimetres; "
             "beside each stands "
             "what the printer allows. \"Use for all my jobs\" keeps the settings as your defaults for this "
             "printer.";
    case Text::useForAllJobs:
      return "_Use for all my jobs";
    case Text::summary:
      return "Summary";
    case Text::reading:
      return "The printer's details are being read.";
    case Text::unavailable:
      return "Tandem Trim settings are not available.";
    case Text::choosePrinter:
      return "Choose a printer: a file is printed as it is, so it cannot be printed to a file.";
    case Text::sending:
      return "Sending…";
  }
  return "";
}

std::string text(const std::vector<IllegalValue>& values) {
  std::string lines;
  for (const auto& value : values) {
    lines += (lines.empty() ? "" : "\n") + value.name + ": this printer does not allow " + value.value +
             " (allowed: " + value.allowed + ")";
  }
  return lines;
}

}  // namespace tandemtrim::host
