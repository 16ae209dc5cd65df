#pragma once

#include <ostream>

#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Carries out the command line: completes the job's settings by the printer's panel, then shows them, stores
/// them or prints the files with them. Results go to `out`. A Failure before the job is sent means that
/// nothing was sent.
void run(const CommandLine& line, std::ostream& out, const Report& report);

}  // namespace tandemtrim::host
