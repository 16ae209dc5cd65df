#include "adapters/linux/files/regular_file.hpp"

#include <array>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tandemtrim::platform::linux {
namespace {

// Opens without blocking, as opening a pipe would block; isRegular() then rejects the pipe.
struct OpenFile {
  explicit OpenFile(const char* path) : descriptor(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { close(descriptor); }
  [[nodiscard]] bool isRegular() const {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  }
  const int descriptor;
};

}  // namespace

bool isFileName(std::string_view name) noexcept {
  const bool isOnePart = name.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
  return !name.empty() && name != "." && name != ".." && isOnePart;
}

std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit,
                                                 std::string* fault) {
  const auto refuse = [fault](const std::string& reason) {
    if (fault != nullptr) *fault = reason;
    return std::nullopt;
  };
  const OpenFile file(path.c_str());
  if (!file.isRegular()) return refuse("cannot be read");
  std::array<char, 4096> piece;
  std::string bytes;
  // Counts the bytes that are read, since the size that the file system reports may be wrong.
  while (bytes.size() <= limit) {
    const auto length = read(file.descriptor, piece.data(), piece.size());
    if (length < 0) return refuse("cannot be read");
    if (length == 0) return bytes;
    bytes.append(piece.data(), static_cast<std::size_t>(length));
  }
  return refuse("longer than " + std::to_string(limit) + " bytes");
}

}  // namespace tandemtrim::platform::linux
