#pragma once

#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"
#include "platform/print_settings.hpp"

namespace tandemtrim::host {

/// Stores the options in a job's settings. Options of a panel with these keywords get the panel's spelling.
void storeOptions(const Options& options, const std::vector<std::string>& keywords,
                  platform::PrintSettings& settings);

/// The options that a job's settings hold for these keywords.
Options storedOptions(const platform::PrintSettings& settings, const std::vector<std::string>& keywords);

/// The printer's defaults for options of these keywords: those that its PPD marks (null has none) and, over
/// them, those of its queue. Other defaults are for the server to supply.
Options printersDefaults(const std::vector<std::string>& keywords, ppd_file_t* ppd, const Options& ofQueue);

}  // namespace tandemtrim::host
