#include "host/panel/trust.hpp"

#include <algorithm>
#include <deque>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// The most links that the system itself follows.
constexpr int kMostLinks = 40;

// Every folder, file and link from the root to the path, following links, up to the first that is missing.
std::vector<PathEntry> pathEntries(const fs::path& path) {
  std::error_code failed;
  const auto absolute = fs::absolute(path, failed);
  std::deque<fs::path> rest(absolute.begin(), absolute.end());
  std::vector<PathEntry> entries;
  fs::path reached;
  for (int links = 0; !rest.empty();) {
    const auto part = rest.front();
    rest.pop_front();
    if (part == "..") reached = reached.parent_path();
    if (part.empty() || part == "." || part == "..") continue;
    PathEntry entry{reached / part};
    if (lstat(entry.path.c_str(), &entry.status) != 0) break;
    entries.push_back(entry);
    if (!S_ISLNK(entry.status.st_mode)) {
      reached = entry.path;
    } else if (++links > kMostLinks) {
      break;
    } else {
      const auto target = fs::read_symlink(entry.path, failed);
      rest.insert(rest.begin(), target.begin(), target.end());
    }
  }
  if (!entries.empty()) entries.back().isLast = true;
  return entries;
}

std::string nameOf(uid_t user) {
  const auto* const entry = getpwuid(user);
  return entry == nullptr ? "user " + std::to_string(user) : entry->pw_name;
}

// Called only for entries that a group may write to: the system's list of users may be on another machine.
bool isOwnGroup(gid_t group, const std::set<uid_t>& owners, const RunningUser& running) {
  return std::ranges::any_of(owners, [&](uid_t owner) {
    const auto* const entry = getpwuid(owner);
    return entry == nullptr ? owner == running.user && group == running.group : group == entry->pw_gid;
  });
}

}  // namespace

std::set<uid_t> trustedOwners() {
  std::set<uid_t> owners{0, geteuid()};
  std::error_code unreadable;
  for (const auto& entry : pathEntries(fs::read_symlink("/proc/self/exe", unreadable)))
    owners.insert(entry.status.st_uid);
  return owners;
}

std::optional<std::string> openToStrangers(const PathEntry& entry, const std::set<uid_t>& owners,
                                           const RunningUser& running) {
  const auto& [path, status, isLast] = entry;
  const auto mode = status.st_mode;
  if (!owners.contains(status.st_uid)) {
    return path.string() + " belongs to " + nameOf(status.st_uid) +
           ", who is neither you nor root (copy it to a folder of your own)";
  }
  const bool isGuarded = !isLast && S_ISDIR(mode) && (mode & S_ISVTX) != 0;
  if (S_ISLNK(mode) || isGuarded) return std::nullopt;
  if ((mode & S_IWOTH) != 0)
    return "everybody can write to " + path.string() + " (run chmod o-w " + path.string() + ')';
  if ((mode & S_IWGRP) != 0 && !isOwnGroup(status.st_gid, owners, running)) {
    return "a group that is not your own may write to " + path.string() + " (run chmod g-w " + path.string() +
           ')';
  }
  return std::nullopt;
}

std::optional<std::string> openToStrangers(const fs::path& path, const std::set<uid_t>& owners) {
  for (const auto& entry : pathEntries(path)) {
    if (auto found = openToStrangers(entry, owners)) return found;
  }
  return std::nullopt;
}

}  // namespace tandemtrim::host
