#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/command_line.hpp"
#include "host/panel/job_settings.hpp"
#include "host/presets/preset.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The name of the family that this printer's presets are kept for: that of its panel's bundle. `ppd` is null
/// for a printer without one. Failure for a printer without a panel.
std::string familyOf(const CommandLine& line, const std::string& printer, ppd_file_t* ppd);

/// Lists the names of the family's presets or, with --json, all that is in them. Failure, behind the list and
/// a line for each, when there are files that give no preset.
void listPresets(const CommandLine& line, const std::string& family, std::ostream& out, const Report& report);

/// The preset that the command line's settings are kept as: the panel's settings as the job has them, and the
/// other options that the command line names or `base` has, but those of one job.
Preset presetOf(const CommandLine& line, const std::optional<Preset>& base, const JobSettings& settings);

}  // namespace tandemtrim::host
