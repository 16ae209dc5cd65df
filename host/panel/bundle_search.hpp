#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Whether there is a bundle at the path.
bool isBundle(const std::filesystem::path& path);

/// Finds a bundle of one of these names, earlier names first. `plugin` is the value of --plugin: a bundle of
/// any name, or the only folder to search. Without it, the folders of TANDEM_TRIM_PLUGIN_PATH and those
/// beside the program are searched. nullopt if no folder has such a bundle; Failure when `plugin` is not a
/// folder.
std::optional<std::filesystem::path> findBundle(const std::optional<std::string>& plugin,
                                                const std::vector<std::string>& names);

/// All bundles in the same places, one of each name, in the order of their names.
std::vector<std::filesystem::path> installedBundles(const std::optional<std::string>& plugin);

/// The bundle with the printer's panel: the one that its PPD names or, for a queue without a PPD (null), the
/// only one that is installed. nullopt if the printer has no panel; PluginFailure when the bundle that its
/// PPD names is missing.
std::optional<std::filesystem::path> bundleOfPrinter(const std::optional<std::string>& plugin,
                                                     ppd_file_t* ppd);

/// The option keywords of all installed panels. A printer without a panel gets none of these options.
std::vector<std::string> keywordsOfPanels(const std::optional<std::string>& plugin);

/// The keyword as the list spells it, which may differ in letter case; nullopt if the list lacks it.
std::optional<std::string> spelledAsIn(const std::vector<std::string>& keywords, const std::string& keyword);

}  // namespace tandemtrim::host
