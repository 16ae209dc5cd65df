#include "adapters/linux/bundle.hpp"

#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "adapters/linux/bundle_info.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "tests/resources/files.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::resources {
namespace {

using testing::IsEmpty;

std::shared_ptr<platform::linux::Bundle> bundleIn(const std::vector<std::string>& languages) {
  std::string reason;
  auto bundle = platform::linux::Bundle::open(BUNDLE, reason, languages);
  EXPECT_TRUE(bundle) << reason;
  return bundle;
}

TEST(BuiltBundle, HasTextsInEachOfItsLanguages) {
  for (const std::string language : kLanguages) {
    const auto bundle = bundleIn({language});
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->localization(), language);
    EXPECT_THAT(bundle->brokenTables(), IsEmpty());
    EXPECT_NE(bundle->localizedStringForKey(TTVCLabelNameValid, "", std::nullopt), TTVCLabelNameValid)
        << language;
  }
}

TEST(BuiltBundle, UsesEnglishForUnknownLanguages) {
  const auto bundle = bundleIn({"fi"});
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->localizedStringForKey(TTVCLabelNameRestoreDefault, "", std::nullopt), "Restore Defaults");
}

TEST(BuiltBundle, ContainsTheSettingInfo) {
  const auto bundle = bundleIn({});
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->pathForResource(TTCISettingInfoName, TTCIPlistResourceType), kSettingInfo);
}

TEST(BuiltBundle, ContainsTheModuleForHostsWithoutAScreen) {
  std::string reason;
  const auto info = platform::linux::BundleInfo::read(BUNDLE, reason);
  ASSERT_TRUE(info) << reason;
  EXPECT_TRUE(std::filesystem::is_regular_file(info->modulePath("-memory"))) << info->modulePath("-memory");
}

}  // namespace
}  // namespace tandemtrim::resources
