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

/// The users who may own the files that the program loads, and the group of each.
struct Owners {
  std::set<uid_t> users;
  std::set<gid_t> groups;
};

/// The users, with their groups from the system's list of users. Where that lacks the running user, as in
/// some containers, the group is that of `running`.
Owners ownersOf(const std::set<uid_t>& users, const RunningUser& running = {});

/// Root, the user, and the owners of the program and of its folders.
Owners trustedOwners();

/// Why users other than the owners could change the entry, and what to do about it; nullopt if they cannot.
/// The entry must belong to an owner, and only the owner and an owner's group may write to it. A folder above
/// the last entry may be open to all if it has the sticky bit: then only the owner of an entry in it can
/// remove that entry.
std::optional<std::string> openToStrangers(const PathEntry& entry, const Owners& owners);

/// The same for every folder and link on the path.
std::optional<std::string> openToStrangers(const std::filesystem::path& path,
                                           const Owners& owners = trustedOwners());

}  // namespace tandemtrim::host
