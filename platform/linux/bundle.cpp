#include "platform/linux/bundle.hpp"

#include <algorithm>
#include <system_error>
#include <utility>

#include <dirent.h>

#include "platform/linux/bundle_info.hpp"
#include "platform/linux/regular_file.hpp"

namespace tandemtrim::platform::linux {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestTable = 1UL << 20U;
constexpr const char* kLocalizationEnding = ".lproj";
constexpr const char* kTableEnding = ".strings";

// What stands before the ending in the names of a folder that have it, in order; nothing for a folder that
// cannot be read.
std::vector<std::string> stemsIn(const fs::path& folder, std::string_view ending) {
  const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(folder.c_str()), &closedir);
  std::vector<std::string> stems;
  while (const auto* const entry = open ? readdir(open.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name.size() > ending.size() && name.ends_with(ending))
      stems.emplace_back(name.substr(0, name.size() - ending.size()));
  }
  std::sort(stems.begin(), stems.end());
  return stems;
}

// Absolute, and without a slash at its end, so that its last part is the bundle's name.
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
  struct Opened : Bundle {
    Opened(fs::path at, const std::vector<std::string>& in) : Bundle(std::move(at), in) {}
  };
  return std::make_shared<Opened>(std::move(folder), languages);
}

Bundle::Bundle(fs::path path, const std::vector<std::string>& languages)
    : path_(std::move(path)), resources_(path_ / "Contents" / "Resources") {
  localization_ = chooseLocalization(stemsIn(resources_, kLocalizationEnding), languages, [this] {
    std::string ignored;
    const auto info = BundleInfo::read(path_, ignored);
    return info ? info->developmentRegion() : std::string();
  });
  if (!localization_) return;
  for (const auto& name : stemsIn(localizationFolder(), kTableEnding)) loadTable(name);
}

void Bundle::loadTable(const std::string& name) {
  const auto file = localizationFolder() / (name + kTableEnding);
  const auto bytes = contentsOfRegularFile(file, kLargestTable);
  std::size_t line = 0;
  auto table = bytes ? parseStringsTable(*bytes, &line) : std::nullopt;
  if (table) {
    tables_.emplace(name, std::move(*table));
  } else if (bytes) {
    brokenTables_.push_back(file.string() + ":" + std::to_string(line) + ": not the form of a string table");
  } else {
    brokenTables_.push_back(file.string() + ": cannot be read");
  }
}

fs::path Bundle::localizationFolder() const { return resources_ / (*localization_ + kLocalizationEnding); }

std::optional<std::string> Bundle::pathForResource(std::string_view name, std::string_view type) const {
  std::string file(name);
  if (!type.empty()) file.append(".").append(type);
  if (name.empty() || !isFileName(file)) return std::nullopt;
  std::error_code ignored;
  if (const auto path = resources_ / file; fs::exists(path, ignored)) return path;
  if (!localization_) return std::nullopt;
  if (const auto path = localizationFolder() / file; fs::exists(path, ignored)) return path;
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
