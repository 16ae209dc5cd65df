#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace tandemtrim::test {

/// A folder that is removed, with its contents, when the object is destroyed.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / ("tandem-trim-test-" + std::string(6, 'X'))).string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = pattern;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  /// Writes a file, with the folders that it needs, and returns its full path.
  std::string write(const std::filesystem::path& name, const std::string& text) const {
    const auto full = path_ / name;
    std::filesystem::create_directories(full.parent_path());
    std::ofstream(full, std::ios::binary) << text;
    return full.string();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tandemtrim::test
