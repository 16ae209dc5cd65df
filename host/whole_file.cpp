#include "host/whole_file.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/file_descriptor.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// As CUPS makes the file that it keeps options in.
constexpr mode_t kReadableFile = 0644;

Failure unreadable(const fs::path& file, const std::string& words) {
  return Failure(Trouble::other, Fact("[file] cannot be read: [words]"_fact,
                                      {{"[file]", file.string()}, {"[words]", words}}));
}

bool writeAll(const FileDescriptor& file, std::string_view text) {
  while (!text.empty()) {
    const auto length = write(file.get(), text.data(), text.size());
    if (length < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return fsync(file.get()) == 0;
}

}  // namespace

std::optional<std::string> readWholeFile(const fs::path& path, std::size_t most) {
  // A pipe would be waited for.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file.isOpen() && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  struct stat status {};
  if (!file.isOpen() || fstat(file.get(), &status) != 0) throw unreadable(path, std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw unreadable(path, "it is no file with contents");
  std::string text;
  std::array<char, 4096> piece{};
  for (;;) {
    const auto length = read(file.get(), piece.data(), piece.size());
    if (length < 0) throw unreadable(path, std::strerror(errno));
    if (length == 0) return text;
    text.append(piece.data(), static_cast<std::size_t>(length));
    if (text.size() > most) throw unreadable(path, "it has more than " + std::to_string(most) + " bytes");
  }
}

void replaceFile(const fs::path& path, const std::string& text) {
  struct stat old {};
  const bool isThere = stat(path.c_str(), &old) == 0;
  auto name = path.string() + ".XXXXXX";
  const FileDescriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file.isOpen()) throw unwritableFile(path);
  const bool isWhole =
      writeAll(file, text) &&
      (!isThere || old.st_uid == geteuid() || fchown(file.get(), old.st_uid, old.st_gid) == 0) &&
      fchmod(file.get(), isThere ? old.st_mode : kReadableFile) == 0 &&
      std::rename(name.c_str(), path.c_str()) == 0;
  if (isWhole) return;
  const auto failure = unwritableFile(path);
  unlink(name.c_str());
  throw Failure(failure);
}

Failure unwritableFile(const fs::path& file) {
  return Failure(Trouble::other, Fact("[file] cannot be written: [words]"_fact,
                                      {{"[file]", file.string()}, {"[words]", std::strerror(errno)}}));
}

}  // namespace tandemtrim::host
