#pragma once

#include "host/dialog/module.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the dialog is to print the files of the command line: when that says so, else when there is a
/// screen, no document comes on standard input, and no option has another part than the job's settings.
bool wantsDialog(const CommandLine& line);

/// Loads the dialog's module, which alone is linked with the toolkit, and shows the dialog; the job that was
/// sent or the file that was saved, or neither when the user cancelled. Failure when the dialog cannot be
/// shown.
Printed showDialog(const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
