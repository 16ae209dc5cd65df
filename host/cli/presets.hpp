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

/// The name of the printer's family, whose presets it uses: that of its panel's bundle. `ppd` is null for a
/// printer without one. Failure for a printer without a panel.
std::string familyOf(const CommandLine& line, const std::string& printer, ppd_file_t* ppd);

/// Lists the names of the family's presets or, with --json, their whole contents. After the list, reports
/// each file without a usable preset; Failure when there are any.
void listPresets(const CommandLine& line, const std::string& family, std::ostream& out, const Report& report);

/// The preset that --save-preset stores: the panel's settings as the job has them, and the other options of
/// the command line and of `base`, except those that concern a single job.
Preset presetOf(const CommandLine& line, const std::optional<Preset>& base, const JobSettings& settings);

}  // namespace tandemtrim::host
