#pragma once

#include <ostream>

#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Does what the command line asks for: settles the job's settings at the printer's panel, then shows them,
/// keeps them or prints the files with them. Results go to `out`. Failure as the parts raise it; until the
/// job is sent, it means that nothing was sent.
void run(const CommandLine& line, std::ostream& out, const Report& report);

}  // namespace tandemtrim::host
