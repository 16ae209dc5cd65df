#include "adapters/linux/bundle.hpp"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include <dirent.h>

#include "adapters/linux/bundle_info.hpp"
#include "adapters/linux/files/property_list.hpp"
#include "adapters/linux/files/regular_file.hpp"

namespace tandemtrim::platform::linux {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestTable = 1UL << 20U;
constexpr const char* kLocalizationEnding = ".lproj";
constexpr const char* kTableEnding = ".strings";
constexpr const char* kPropertyListEnding = ".plist";

// The names in a folder that have this ending, without it and sorted. A folder that cannot be read completely
// is added to the faults, once; a missing folder has no names.
std::vector<std::string> stemsIn(const fs::path& folder, std::string_view ending,
                                 std::vector<std::string>& faults) {
  std::vector<std::string> stems;
  // Does not use std::filesystem, whose iterators end the program when memory is exhausted.
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
  bool isWhole = listing != nullptr || errno == ENOENT;
  while (listing) {
    errno = 0;
    const dirent* const entry = readdir(listing.get());
    isWhole = entry != nullptr || errno == 0;
    if (entry == nullptr) break;
    const fs::path name(entry->d_name);
    if (name.extension() == ending) stems.push_back(name.stem());
  }
  const auto fault = folder.string() + ": cannot be read";
  if (!isWhole && std::ranges::find(faults, fault) == faults.end()) faults.push_back(fault);
  std::sort(stems.begin(), stems.end());
  return stems;
}

// The absolute path without a trailing slash, so that its last part is the bundle's name.
fs::path folderAt(const std::string& path) {
  std::error_code ignored;
  auto folder = fs::absolute(path, ignored).lexically_normal();
  return folder.has_filename() ? folder : folder.parent_path();
}

}  // namespace

std::shared_ptr<Bundle> Bundle::open(const std::string& path, std::string& reason,
                                     const std::vector<std::string>& languages) {
  std::error_code ignored;
  if (!fs::is_directory(path, ignored)) {
    reason = "there is no folder " + path;
    return nullptr;
  }
  auto folder = folderAt(path);
  const auto infoFile = (folder / "Contents" / "Info.plist").string();
  if (!fs::exists(infoFile, ignored)) {
    reason = "there is no file " + infoFile;
    return nullptr;
  }
  return std::shared_ptr<Bundle>(new Bundle(std::move(folder), languages));
}

Bundle::Bundle(fs::path path, const std::vector<std::string>& languages)
    : path_(std::move(path)), resources_(path_ / "Contents" / "Resources") {
  std::string fault;
  const auto info = BundleInfo::read(path_, fault);
  if (!info) brokenTables_.push_back(fault);
  const auto region = info ? info->developmentRegion() : std::string();
  const auto available = stemsIn(resources_, kLocalizationEnding, brokenTables_);
  localization_ = chooseLocalization(available, languages, region);
  for (const auto& localization : {localization_, localizationOf(region, available)}) {
    if (localization) loadTables(folderOf(*localization));
  }
  loadTables(resources_);
}

// Skips tables that are loaded already. A broken table counts as one without texts.
void Bundle::loadTables(const fs::path& folder) {
  for (const auto& name : stemsIn(folder, kTableEnding, brokenTables_)) {
    const auto [table, isNew] = tables_.try_emplace(name);
    if (!isNew) continue;
    const auto file = (folder / (name + kTableEnding)).string();
    std::string fault;
    std::size_t line = 0;
    const auto bytes = contentsOfRegularFile(file, kLargestTable, &fault);
    auto texts = bytes ? parseStringsTable(*bytes, &line) : std::nullopt;
    if (texts) {
      table->second = *std::move(texts);
    } else if (bytes) {
      brokenTables_.push_back(file + ":" + std::to_string(line) + ": not a valid string table");
    } else {
      brokenTables_.push_back(file + ": " + fault);
    }
  }
}

std::vector<std::string> Bundle::brokenPropertyLists() const {
  std::vector<std::string> faults;
  for (const auto& folder : {resources_, localization_ ? folderOf(*localization_) : fs::path()}) {
    for (const auto& name : stemsIn(folder, kPropertyListEnding, faults)) {
      std::string fault;
      if (!readPropertyList(folder / (name + kPropertyListEnding), fault)) faults.push_back(std::move(fault));
    }
  }
  return faults;
}

fs::path Bundle::folderOf(const std::string& localization) const {
  return resources_ / (localization + kLocalizationEnding);
}

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type) const {
  std::string file(name);
  if (!type.empty()) file.append(".").append(type);
  if (name.empty() || !isFileName(file)) return std::nullopt;
  std::error_code ignored;
  if (const auto path = resources_ / file; fs::exists(path, ignored)) return path;
  if (!localization_) return std::nullopt;
  if (const auto path = folderOf(*localization_) / file; fs::exists(path, ignored)) return path;
  return std::nullopt;
}

std::string Bundle::localizedStringForKey(std::string_view key, std::string_view value,
                                          std::optional<std::string_view> table) const {
  if (const auto texts = tables_.find(table.value_or("Localizable")); texts != tables_.end()) {
    if (const auto text = texts->second.find(key); text != texts->second.end()) return text->second;
  }
  return std::string(value.empty() ? key : value);
}

}  // namespace tandemtrim::platform::linux
