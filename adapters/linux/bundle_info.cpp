#include "adapters/linux/bundle_info.hpp"

#include <utility>

#include "adapters/linux/files/property_list.hpp"
#include "adapters/linux/files/regular_file.hpp"

namespace tandemtrim::platform::linux {

std::optional<BundleInfo> BundleInfo::read(const std::filesystem::path& bundle, std::string& reason) {
  auto dictionary = readPropertyList((bundle / "Contents" / "Info.plist").string(), reason);
  if (!dictionary) return std::nullopt;
  return BundleInfo(bundle, std::move(dictionary));
}

BundleInfo::BundleInfo(std::filesystem::path bundle, std::shared_ptr<const Dictionary> dictionary)
    : bundle_(std::move(bundle)), dictionary_(std::move(dictionary)) {}

std::optional<std::string> BundleInfo::text(std::string_view key) const {
  const auto object = find(*dictionary_, key);
  const auto* text = object ? object->as<std::string>() : nullptr;
  return text == nullptr ? std::nullopt : std::optional(*text);
}

std::string BundleInfo::developmentRegion() const { return text("CFBundleDevelopmentRegion").value_or("en"); }

std::string BundleInfo::executableName() const {
  const auto name = text("CFBundleExecutable");
  if (name && isFileName(*name)) return *name;
  return bundle_.stem();
}

std::vector<std::string> BundleInfo::optionKeywords() const {
  std::vector<std::string> keywords;
  const auto list = find(*dictionary_, "PrintOptionKeywords");
  const auto* entries = list ? list->as<Array>() : nullptr;
  for (const auto& entry : entries != nullptr ? *entries : Array()) {
    if (const auto* keyword = entry->as<std::string>()) keywords.push_back(*keyword);
  }
  return keywords;
}

std::string BundleInfo::modulePath(std::string_view suffix) const {
  return bundle_ / "Contents" / "Linux" / executableName().append(suffix);
}

}  // namespace tandemtrim::platform::linux
