#include "host/bundle_search.hpp"

#include <array>
#include <cstdlib>
#include <sstream>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// Seen from the program's folder: where an installation has bundles, and where a build leaves them.
constexpr std::array<const char*, 2> kFoldersBesideProgram{"../" TANDEM_TRIM_LIBDIR "/tandem-trim", ".."};

std::vector<fs::path> standardFolders() {
  std::vector<fs::path> folders;
  if (const char* list = std::getenv("TANDEM_TRIM_PLUGIN_PATH")) {
    std::istringstream entries(list);
    for (std::string folder; std::getline(entries, folder, ':');) {
      if (!folder.empty()) folders.emplace_back(folder);
    }
  }
  std::error_code unreadable;
  const auto program = fs::read_symlink("/proc/self/exe", unreadable);
  if (!unreadable) {
    for (const char* folder : kFoldersBesideProgram) folders.push_back(program.parent_path() / folder);
  }
  return folders;
}

}  // namespace

bool isBundle(const fs::path& path) {
  std::error_code unreadable;
  return fs::is_regular_file(path / "Contents/Info.plist", unreadable);
}

std::optional<fs::path> findBundle(const std::optional<std::string>& plugin,
                                   const std::vector<std::string>& names) {
  if (plugin) {
    std::error_code unreadable;
    if (!fs::is_directory(*plugin, unreadable)) {
      throw PluginFailure("--plugin " + *plugin + " is no folder");
    }
    if (isBundle(*plugin)) return *plugin;
  }
  const auto folders = plugin ? std::vector<fs::path>{*plugin} : standardFolders();
  for (const auto& name : names) {
    for (const auto& folder : folders) {
      if (auto path = folder / name; isBundle(path)) return path;
    }
  }
  return std::nullopt;
}

}  // namespace tandemtrim::host
