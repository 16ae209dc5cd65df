#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <sys/types.h>

namespace tandemtrim::host {

/// Those who may own what the program loads: root, the user, and whoever could replace the program itself.
std::set<uid_t> trustedOwners();

/// Why strangers could change what is at the path, and what to do about it; none when they cannot. The path's
/// every folder and every link on it counts: it belongs to one of the owners, and nobody else may write there
/// but the own group of an owner. Folders above the path may be open to all when only an entry's owner can
/// remove it there (the sticky bit).
std::optional<std::string> openToStrangers(const std::filesystem::path& path,
                                           const std::set<uid_t>& owners = trustedOwners());

}  // namespace tandemtrim::host
