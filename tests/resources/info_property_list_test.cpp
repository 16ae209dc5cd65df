#include <filesystem>
#include <set>
#include <string>

#include <gmock/gmock.h>

#include "tests/resources/files.hpp"

namespace tandemtrim::resources {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::UnorderedElementsAreArray;

class InfoPropertyList : public testing::Test {
 protected:
  std::string text(std::string_view key) const {
    return platform::requiredText(platform::find(info, key), key);
  }

  platform::Dictionary info = propertyListAt(kContents + "/Info.plist");
};

TEST_F(InfoPropertyList, HasTheEntriesThatAHostNeedsToLoadThePlugIn) {
  EXPECT_EQ(text("NSPrincipalClass"), "MorvaTTPdePluginKV2");
  EXPECT_EQ(text("CFBundleExecutable"), "TandemTrim");
  EXPECT_EQ(text("CFBundlePackageType"), "BNDL");
  EXPECT_EQ(text("CFBundleInfoDictionaryVersion"), "6.0");
}

TEST_F(InfoPropertyList, NamesTheBundle) {
  EXPECT_EQ(text("CFBundleIdentifier"), "com.morva.printing.pde.tandemtrim");
  EXPECT_EQ(text("CFBundleName"), "TandemTrim");
}

// Without PMSandboxCompatiblePDEs, macOS's print dialog does not load the bundle into an application.
TEST_F(InfoPropertyList, HasTheEntriesThatMacOSNeedsToLoadTheBundle) {
  EXPECT_EQ(text("LSMinimumSystemVersion"), MINIMUM_MACOS);
  const auto sandboxed = platform::find(info, "PMSandboxCompatiblePDEs");
  ASSERT_TRUE(sandboxed && sandboxed->as<bool>());
  EXPECT_TRUE(*sandboxed->as<bool>());
}

TEST_F(InfoPropertyList, HasTheVersionOfTheBuild) {
  EXPECT_EQ(text("CFBundleShortVersionString"), VERSION);
  EXPECT_EQ(text("CFBundleVersion"), VERSION);
}

TEST_F(InfoPropertyList, ListsTheLanguagesOfTheBundleIncludingTheFallback) {
  std::set<std::string> folders;
  for (const auto& entry : fs::directory_iterator(kContents + "/Resources")) {
    if (entry.path().extension() == ".lproj") folders.insert(entry.path().stem());
  }
  std::set<std::string> listed;
  const auto localizations = platform::find(info, "CFBundleLocalizations");
  ASSERT_TRUE(localizations && localizations->as<platform::Array>());
  for (const auto& language : *localizations->as<platform::Array>()) {
    listed.insert(platform::requiredText(language, "a language"));
  }
  EXPECT_EQ(listed, folders);
  EXPECT_THAT(listed, UnorderedElementsAreArray(kLanguages));
  EXPECT_THAT(listed, Contains(text("CFBundleDevelopmentRegion")));
}

TEST_F(InfoPropertyList, ListsTheOptionKeywordsOfTheSettingInfo) {
  std::set<std::string> listed;
  const auto keywords = platform::find(info, "PrintOptionKeywords");
  ASSERT_TRUE(keywords && keywords->as<platform::Array>());
  for (const auto& keyword : *keywords->as<platform::Array>())
    listed.insert(platform::requiredText(keyword, "a keyword"));
  std::set<std::string> stored;
  const auto keys = platform::find(propertyListAt(kSettingInfo), "TicketKey");
  ASSERT_TRUE(keys && keys->as<platform::Dictionary>());
  for (const auto& [name, keyword] : *keys->as<platform::Dictionary>())
    stored.insert(platform::requiredText(keyword, name));
  EXPECT_EQ(listed, stored);
}

}  // namespace
}  // namespace tandemtrim::resources
