#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <sys/types.h>

namespace tandemtrim::host {

/// The users who may own the files that the program loads: root, the user, and the owners of the program and
/// its folders.
std::set<uid_t> trustedOwners();

/// Why users other than the owners could change the file at the path, and what to do about it; nullopt if
/// they cannot. Every folder and link on the path must belong to an owner, and only the owner and an owner's
/// own group may write to it. Folders above the path may be open to all if they have the sticky bit: then
/// only the owner of an entry can remove it.
std::optional<std::string> openToStrangers(const std::filesystem::path& path,
                                           const std::set<uid_t>& owners = trustedOwners());

}  // namespace tandemtrim::host
