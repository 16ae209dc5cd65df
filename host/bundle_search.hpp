#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tandemtrim::host {

/// Whether there is a bundle at the path.
bool isBundle(const std::filesystem::path& path);

/// The bundle for a printer whose PPD names these, best first; for a printer without a PPD `names` holds
/// kDefaultBundle. `plugin` is what --plugin gives: a bundle, which is taken whatever its name, or the one
/// folder to look in. Without it the folders of TANDEM_TRIM_PLUGIN_PATH and those beside the program are
/// searched. None when no folder holds such a bundle; Failure when `plugin` is no folder.
std::optional<std::filesystem::path> findBundle(const std::optional<std::string>& plugin,
                                                const std::vector<std::string>& names);

}  // namespace tandemtrim::host
