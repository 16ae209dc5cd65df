#pragma once

#include <string>
#include <vector>

#include "host/job/options.hpp"
#include "platform/print_settings.hpp"

namespace tandemtrim::host {

/// Stores the options in a job's settings. Options of a panel with these keywords get the panel's spelling.
void storeOptions(const Options& options, const std::vector<std::string>& keywords,
                  platform::PrintSettings& settings);

/// The options that a job's settings hold for these keywords.
Options storedOptions(const platform::PrintSettings& settings, const std::vector<std::string>& keywords);

}  // namespace tandemtrim::host
