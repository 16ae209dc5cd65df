#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace tandemtrim::host {

/// An entry on a path, as lstat() describes it.
struct PathEntry {
  std::filesystem::path path;
  struct stat status {};
  bool isLast = false;
};

/// The user who runs the program.
struct RunningUser {
  uid_t user = geteuid();
  gid_t group = getegid();
};

/// The users who may own the files that the program loads: root, the user, and the owners of the program and
/// its folders.
std::set<uid_t> trustedOwners();

/// Why users other than the owners could change the entry, and what to do about it; nullopt if they cannot.
/// The entry must belong to an owner, and only the owner and an owner's own group may write to it: the one in
/// the system's list of users or, if the running user is missing there, as in some containers, that user's. A
/// folder above the last entry may be open to all if it has the sticky bit: then only the owner of an entry
/// in it can remove that entry.
std::optional<std::string> openToStrangers(const PathEntry& entry, const std::set<uid_t>& owners,
                                           const RunningUser& running = {});

/// The same for every folder, file and link on the path.
std::optional<std::string> openToStrangers(const std::filesystem::path& path,
                                           const std::set<uid_t>& owners = trustedOwners());

}  // namespace tandemtrim::host
