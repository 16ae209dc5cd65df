#include "platform/linux/regular_file.hpp"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace tandemtrim::platform::linux {

std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  // A file that is too long fills one byte more than the limit before it ends, whatever size the file system
  // gives for it.
  std::string bytes(limit + 1, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.eof()) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

}  // namespace tandemtrim::platform::linux
