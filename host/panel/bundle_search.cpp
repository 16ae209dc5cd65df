#include "host/panel/bundle_search.hpp"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <sstream>

#include "adapters/linux/bundle_info.hpp"
#include "host/cups/ppd.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

// The folder where an installation has bundles and, in a build, the folder of the build's own bundles.
std::vector<fs::path> foldersBesideProgram() {
  const auto above = fs::read_symlink("/proc/self/exe").parent_path() / "..";
  std::vector<fs::path> folders{above / TANDEM_TRIM_LIBDIR / "tandem-trim"};
  if (std::error_code unreadable; fs::exists(above / "CMakeCache.txt", unreadable)) folders.push_back(above);
  return folders;
}

std::vector<fs::path> standardFolders() {
  std::vector<fs::path> folders;
  if (const char* list = std::getenv("TANDEM_TRIM_PLUGIN_PATH")) {
    std::istringstream entries(list);
    for (std::string folder; std::getline(entries, folder, ':');) {
      if (!folder.empty()) folders.emplace_back(folder);
    }
  }
  std::ranges::copy(foldersBesideProgram(), std::back_inserter(folders));
  return folders;
}

std::vector<fs::path> foldersOf(const std::optional<std::string>& plugin) {
  return plugin ? std::vector<fs::path>{*plugin} : standardFolders();
}

std::string anyOf(const std::vector<std::string>& names) {
  std::string text;
  for (const auto& name : names) text += (text.empty() ? "" : " or ") + name;
  return text;
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
      throw PluginFailure(Fact("--plugin " + *plugin + " is not a folder", "[file] is not a folder"_fact,
                               {{"[file]", *plugin}}));
    }
    if (isBundle(*plugin)) return *plugin;
  }
  const auto folders = foldersOf(plugin);
  for (const auto& name : names) {
    for (const auto& folder : folders) {
      if (auto path = folder / name; isBundle(path)) return path;
    }
  }
  return std::nullopt;
}

std::vector<fs::path> installedBundles(const std::optional<std::string>& plugin) {
  if (plugin && isBundle(*plugin)) return {*plugin};
  std::map<fs::path, fs::path> byName;
  for (const auto& folder : foldersOf(plugin)) {
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(folder, unreadable)) {
      const auto& path = entry.path();
      if (path.extension() == ".bundle" && isBundle(path)) byName.emplace(path.filename(), path);
    }
  }
  std::vector<fs::path> bundles;
  std::ranges::transform(byName, std::back_inserter(bundles), [](const auto& entry) { return entry.second; });
  return bundles;
}

std::optional<fs::path> bundleOfPrinter(const std::optional<std::string>& plugin, ppd_file_t* ppd) {
  if (ppd == nullptr) {
    const auto installed = installedBundles(plugin);
    return installed.size() == 1 ? std::optional(installed.front()) : std::nullopt;
  }
  const auto names = dialogExtensions(*ppd);
  if (names.empty()) return std::nullopt;
  auto bundle = findBundle(plugin, names);
  if (!bundle) {
    throw PluginFailure(
        Fact("the plug-in " + anyOf(names) + (plugin ? " is not in " + *plugin : " is not installed"),
             "the plug-in [names] is not installed"_fact, {{"[names]", anyOf(names)}}));
  }
  return bundle;
}

std::vector<std::string> keywordsOfPanels(const std::optional<std::string>& plugin) {
  std::vector<std::string> keywords;
  for (const auto& bundle : installedBundles(plugin)) {
    std::string reason;
    const auto info = platform::linux::BundleInfo::read(bundle, reason);
    if (info) std::ranges::copy(info->optionKeywords(), std::back_inserter(keywords));
  }
  return keywords;
}

std::optional<std::string> spelledAsIn(const std::vector<std::string>& keywords, const std::string& keyword) {
  const auto known = std::ranges::find_if(
      keywords, [&](const auto& candidate) { return isSameKeyword(candidate, keyword); });
  return known == keywords.end() ? std::nullopt : std::optional(*known);
}

}  // namespace tandemtrim::host
