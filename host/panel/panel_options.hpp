#pragma once

#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"
#include "platform/print_settings.hpp"

namespace tandemtrim::host {

/// Stores the options in a job's settings. Options of a panel are spelled as in its `keywords`.
void storeOptions(const Options& options, const std::vector<std::string>& keywords,
                  platform::PrintSettings& settings);

/// The options of these keywords in a job's settings.
Options storedOptions(const platform::PrintSettings& settings, const std::vector<std::string>& keywords);

/// The printer's defaults for options of these keywords: the PPD's (`ppd` may be null), overridden by the
/// queue's. The server itself supplies all other defaults.
Options printersDefaults(const std::vector<std::string>& keywords, ppd_file_t* ppd, const Options& ofQueue);

}  // namespace tandemtrim::host
