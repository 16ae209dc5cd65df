#include "host/panel/bundle_search.hpp"

#include <cstdlib>

#include <gmock/gmock.h>

#include "tests/host/dialog/sample_ppd.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;

// While it exists, bundles are searched for in these folders.
class SearchedFolders {
 public:
  explicit SearchedFolders(const std::string& folders) {
    setenv("TANDEM_TRIM_PLUGIN_PATH", folders.c_str(), 1);
  }
  SearchedFolders(const SearchedFolders&) = delete;
  SearchedFolders& operator=(const SearchedFolders&) = delete;
  ~SearchedFolders() { unsetenv("TANDEM_TRIM_PLUGIN_PATH"); }
};

TEST(ABundle, MayHaveAnyNameIfTheUserNamesItsPath) {
  const test::TemporaryFolder folder;
  const auto bundle = writeBundle(folder, "Mine.bundle");
  EXPECT_EQ(findBundle(bundle, {"TandemTrim.bundle"}), bundle);
}

TEST(ABundle, IsFoundByNameInTheFolderThatTheUserNames) {
  const test::TemporaryFolder folder;
  const auto bundle = writeBundle(folder, "TandemTrim.bundle");
  EXPECT_EQ(findBundle(folder.path().string(), {"Missing.bundle", "TandemTrim.bundle"}), bundle);
  EXPECT_EQ(findBundle(folder.path().string(), {"Missing.bundle"}), std::nullopt);
}

TEST(ABundle, IsSearchedForInTheFoldersOfTheEnvironmentInTheirOrder) {
  const test::TemporaryFolder first;
  const test::TemporaryFolder second;
  const auto bundle = writeBundle(second, "EnvironmentTest.bundle");
  setenv("TANDEM_TRIM_PLUGIN_PATH", (first.path().string() + "::" + second.path().string()).c_str(), 1);
  EXPECT_EQ(findBundle(std::nullopt, {"EnvironmentTest.bundle"}), bundle);
  const auto earlier = writeBundle(first, "EnvironmentTest.bundle");
  EXPECT_EQ(findBundle(std::nullopt, {"EnvironmentTest.bundle"}), earlier);
  unsetenv("TANDEM_TRIM_PLUGIN_PATH");
  EXPECT_EQ(findBundle(std::nullopt, {"EnvironmentTest.bundle"}), std::nullopt);
}

// The PPD names the best one first.
TEST(ABundle, NamedFirstIsTakenEvenFromALaterFolder) {
  const test::TemporaryFolder first;
  const test::TemporaryFolder second;
  writeBundle(first, "Other.bundle");
  const auto best = writeBundle(second, "Best.bundle");
  const SearchedFolders folders{first.path().string() + ":" + second.path().string()};
  EXPECT_EQ(findBundle(std::nullopt, {"Best.bundle", "Other.bundle"}), best);
}

TEST(InstalledBundles, AreEachNamedOnceFromTheFirstFolderThatHasIt) {
  const test::TemporaryFolder first;
  const test::TemporaryFolder second;
  const auto twice = writeBundle(first, "Twice.bundle");
  writeBundle(second, "Twice.bundle");
  const auto once = writeBundle(second, "Once.bundle");
  writeBundle(second, "Another.folder");
  second.write("Empty.bundle/Contents/Resources/file", "x");
  const SearchedFolders folders{first.path().string() + ":" + second.path().string()};
  const auto bundles = installedBundles(std::nullopt);
  EXPECT_THAT(bundles, testing::IsSupersetOf({std::filesystem::path(once), std::filesystem::path(twice)}));
  for (const auto* const absent : {"Another.folder", "Empty.bundle", "Twice.bundle"})
    EXPECT_THAT(bundles, testing::Not(testing::Contains(second.path() / absent)));
}

TEST(InstalledBundles, AreOnlyTheOneThatTheUserNames) {
  const test::TemporaryFolder folder;
  const auto named = writeBundle(folder, "Named.bundle");
  writeBundle(folder, "Other.bundle");
  EXPECT_THAT(installedBundles(named), testing::ElementsAre(named));
}

TEST(ABundle, IsNotSearchedForInTheWorkingFolder) {
  const test::TemporaryFolder folder;
  writeBundle(folder, "WorkingFolder.bundle");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  setenv("TANDEM_TRIM_PLUGIN_PATH", ":", 1);
  EXPECT_EQ(findBundle(std::nullopt, {"WorkingFolder.bundle"}), std::nullopt);
  unsetenv("TANDEM_TRIM_PLUGIN_PATH");
  std::filesystem::current_path(before);
}

TEST(AFolderWithoutInfoPlist, IsNotABundle) {
  const test::TemporaryFolder folder;
  folder.write("Empty.bundle/Contents/Resources/file", "x");
  EXPECT_FALSE(isBundle(folder.path() / "Empty.bundle"));
}

TEST(ThePluginsOfAPrinter, AreAllNamedIfNoneIsInstalled) {
  const test::SamplePpd ppd(
      "*APDialogExtension: \"/a/First.bundle\"\n*APDialogExtension: \"/a/Second.bundle\"\n");
  EXPECT_THAT(failureOf([&] { bundleOfPrinter(std::nullopt, ppd.get()); }).what(),
              testing::HasSubstr("the plug-in First.bundle or Second.bundle is not installed"));
}

TEST(ThePanelsKeywords, AreThoseOfTheBundlesThatCanBeRead) {
  const test::TemporaryFolder folder;
  writeBundle(folder, "Fake.bundle");
  folder.write("Damaged.bundle/Contents/Info.plist", "no property list");
  writeBundle(folder, "Other.folder");
  folder.write("Empty.bundle/file", "");
  EXPECT_THAT(keywordsOfPanels(folder.path().string()),
              testing::ElementsAre("FakeOn", "FakePosition", "FakeTop"));
}

TEST(APluginThatIsNotAFolder, IsReported) {
  const auto failure = failureOf([] { findBundle("/nowhere", {"TandemTrim.bundle"}); });
  EXPECT_THAT(failure.what(), testing::HasSubstr("/nowhere"));
}

}  // namespace
}  // namespace tandemtrim::host
