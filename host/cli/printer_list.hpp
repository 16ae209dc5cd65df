#pragma once

#include <ostream>

#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Lists the server's printers, a line each: the name, whether it has a panel, and "default" after the user's
/// default printer. Failure when the server cannot be asked.
void listPrinters(const CommandLine& line, std::ostream& out, const Report& report);

}  // namespace tandemtrim::host
