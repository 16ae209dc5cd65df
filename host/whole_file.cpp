#include "host/whole_file.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// The mode that CUPS gives its file of saved options.
constexpr mode_t kReadableFile = 0644;
constexpr mode_t kLockFile = 0600;
constexpr std::chrono::milliseconds kLockInterval{5};

bool writeAll(const FileDescriptor& file, std::string_view text) {
  while (!text.empty()) {
    const auto length = write(file.get(), text.data(), text.size());
    if (length < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return fsync(file.get()) == 0;
}

// Changes nothing if both are right already, since a file system without owners refuses any change.
bool giveTo(const FileDescriptor& file, uid_t owner, gid_t group) {
  struct stat status {};
  if (fstat(file.get(), &status) != 0) return false;
  return (status.st_uid == owner && status.st_gid == group) || fchown(file.get(), owner, group) == 0;
}

}  // namespace

std::optional<std::string> readWholeFile(const fs::path& file, std::size_t most) {
  // O_NONBLOCK, because opening a pipe would block.
  const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!opened.isOpen() && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  struct stat status {};
  if (!opened.isOpen() || fstat(opened.get(), &status) != 0) throw unreadableFile(file, std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw unreadableFile(file, "it is not a regular file");
  std::string text;
  std::array<char, 4096> piece{};
  for (;;) {
    const auto length = read(opened.get(), piece.data(), piece.size());
    if (length < 0) throw unreadableFile(file, std::strerror(errno));
    if (length == 0) return text;
    text.append(piece.data(), static_cast<std::size_t>(length));
    if (text.size() > most) throw unreadableFile(file, "it has more than " + std::to_string(most) + " bytes");
  }
}

void replaceFile(const fs::path& file, const std::string& text) {
  struct stat old {};
  const bool isThere = stat(file.c_str(), &old) == 0;
  auto name = file.string() + ".XXXXXX";
  const FileDescriptor opened(mkostemp(name.data(), O_CLOEXEC));
  if (!opened.isOpen()) throw unwritableFile(file);
  const bool isWhole = writeAll(opened, text) && (!isThere || giveTo(opened, old.st_uid, old.st_gid)) &&
                       fchmod(opened.get(), isThere ? old.st_mode : kReadableFile) == 0 &&
                       std::rename(name.c_str(), file.c_str()) == 0;
  if (isWhole) return;
  const auto failure = unwritableFile(file);
  unlink(name.c_str());
  throw Failure(failure);
}

FileDescriptor lockFile(const fs::path& file, std::chrono::milliseconds longest) {
  const auto name = file.string() + ".lock";
  FileDescriptor lock(open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kLockFile));
  if (!lock.isOpen()) throw unwritableFile(file);
  const auto end = std::chrono::steady_clock::now() + longest;
  while (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK) throw unwritableFile(file);
    if (std::chrono::steady_clock::now() >= end)
      throw Failure(Trouble::other, Fact(name + " is locked by another program; see which with fuser " + name,
                                         "[file] is locked by another program"_fact, {{"[file]", name}}));
    std::this_thread::sleep_for(kLockInterval);
  }
  return lock;
}

Failure unreadableFile(const fs::path& file, const std::string& words) {
  return Failure(Trouble::other, Fact("[file] cannot be read: [words]"_fact,
                                      {{"[file]", file.string()}, {"[words]", words}}));
}

Failure unwritableFile(const fs::path& file) {
  return Failure(Trouble::other, Fact("[file] cannot be written: [words]"_fact,
                                      {{"[file]", file.string()}, {"[words]", std::strerror(errno)}}));
}

}  // namespace tandemtrim::host
