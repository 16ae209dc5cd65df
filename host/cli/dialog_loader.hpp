#pragma once

#include "host/dialog/module.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the files of the command line are to be printed by the dialog: when the command line says so, else
/// when there is a screen and the command line itself asks nothing of the panel.
bool wantsDialog(const CommandLine& line);

/// Loads the dialog's module, which alone is linked with the toolkit, and shows the dialog; the job that was
/// sent, or none when the user cancelled. Failure when the dialog cannot be shown or there is nothing to
/// print.
std::optional<SentJob> showDialog(const CommandLine& line, const Report& report);

}  // namespace tandemtrim::host
