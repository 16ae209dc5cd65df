#include "platform/linux/regular_file.hpp"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace tandemtrim::platform::linux {

std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  // One byte more than the limit tells a file that is too long, whatever size the file system gives for it.
  std::string bytes(limit + 1, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  const auto length = static_cast<std::size_t>(file.gcount());
  if (!file.eof() || length > limit) return std::nullopt;
  bytes.resize(length);
  return bytes;
}

}  // namespace tandemtrim::platform::linux
