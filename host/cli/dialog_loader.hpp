#pragma once

#include "host/dialog/module.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the dialog prints the files of the command line: as --dialog or --no-dialog says, else when there
/// is a screen, no document comes on standard input, and every option fits the dialog.
bool wantsDialog(const CommandLine& line);

/// Loads the dialog's modules, which are linked with the toolkit while this one is not, and shows the dialog.
/// Returns the sent job or the saved file, or neither when the user cancelled. Failure when the dialog cannot
/// be shown.
Printed showDialog(const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
