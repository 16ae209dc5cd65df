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

struct Node {
  fs::path path;
  struct stat status;
};

// Every folder, file and link from the root to the path, following links, up to the first that is missing.
std::vector<Node> nodesOf(const fs::path& path) {
  std::error_code failed;
  const auto absolute = fs::absolute(path, failed);
  std::deque<fs::path> rest(absolute.begin(), absolute.end());
  std::vector<Node> nodes;
  fs::path reached;
  for (int links = 0; !rest.empty();) {
    const auto part = rest.front();
    rest.pop_front();
    if (part == "..") reached = reached.parent_path();
    if (part.empty() || part == "." || part == "..") continue;
    Node node{reached / part, {}};
    if (lstat(node.path.c_str(), &node.status) != 0) break;
    nodes.push_back(node);
    if (!S_ISLNK(node.status.st_mode)) {
      reached = node.path;
    } else if (++links > kMostLinks) {
      break;
    } else {
      const auto target = fs::read_symlink(node.path, failed);
      rest.insert(rest.begin(), target.begin(), target.end());
    }
  }
  return nodes;
}

std::string nameOf(uid_t user) {
  const auto* const entry = getpwuid(user);
  return entry == nullptr ? "user " + std::to_string(user) : entry->pw_name;
}

bool isOwnGroup(gid_t group, const std::set<uid_t>& owners) {
  return std::ranges::any_of(owners, [&](uid_t owner) {
    const auto* const entry = getpwuid(owner);
    return entry == nullptr ? owner == geteuid() && group == getegid() : group == entry->pw_gid;
  });
}

std::optional<std::string> fault(const Node& node, bool isLast, const std::set<uid_t>& owners) {
  const auto& [path, status] = node;
  const auto mode = status.st_mode;
  if (!owners.contains(status.st_uid)) {
    return path.string() + " belongs to " + nameOf(status.st_uid) +
           ", who is neither you nor root (copy it to a folder of your own)";
  }
  const bool isGuarded = !isLast && S_ISDIR(mode) && (mode & S_ISVTX) != 0;
  if (S_ISLNK(mode) || isGuarded) return std::nullopt;
  if ((mode & S_IWOTH) != 0)
    return "everybody can write to " + path.string() + " (end that by chmod o-w " + path.string() + ')';
  if ((mode & S_IWGRP) != 0 && !isOwnGroup(status.st_gid, owners)) {
    return "a group that is not your own may write to " + path.string() + " (end that by chmod g-w " +
           path.string() + ')';
  }
  return std::nullopt;
}

}  // namespace

std::set<uid_t> trustedOwners() {
  std::set<uid_t> owners{0, geteuid()};
  std::error_code unreadable;
  for (const auto& node : nodesOf(fs::read_symlink("/proc/self/exe", unreadable)))
    owners.insert(node.status.st_uid);
  return owners;
}

std::optional<std::string> openToStrangers(const fs::path& path, const std::set<uid_t>& owners) {
  const auto nodes = nodesOf(path);
  for (const auto& node : nodes) {
    if (auto found = fault(node, &node == &nodes.back(), owners)) return found;
  }
  return std::nullopt;
}

}  // namespace tandemtrim::host
