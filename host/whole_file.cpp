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

bool writeAll(const FileDescriptor& file, std::string_view text) {
  while (!text.empty()) {
    const auto length = write(file.get(), text.data(), text.size());
    if (length < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return fsync(file.get()) == 0;
}

}  // namespace

std::optional<std::string> readWholeFile(const fs::path& file, std::size_t most) {
  // A pipe would be waited for.
  const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!opened.isOpen() && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  struct stat status {};
  if (!opened.isOpen() || fstat(opened.get(), &status) != 0) throw unreadableFile(file, std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw unreadableFile(file, "it is no file with contents");
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
  const bool isWhole =
      writeAll(opened, text) &&
      (!isThere || old.st_uid == geteuid() || fchown(opened.get(), old.st_uid, old.st_gid) == 0) &&
      fchmod(opened.get(), isThere ? old.st_mode : kReadableFile) == 0 &&
      std::rename(name.c_str(), file.c_str()) == 0;
  if (isWhole) return;
  const auto failure = unwritableFile(file);
  unlink(name.c_str());
  throw Failure(failure);
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
