#include "host/panel/bundle_search.hpp"

#include <cstdlib>

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;

TEST(ABundle, IsTakenUnderAnyNameWhenTheUserNamesIt) {
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

TEST(AFolderWithoutInfoPlist, IsNoBundle) {
  const test::TemporaryFolder folder;
  folder.write("Empty.bundle/Contents/Resources/file", "x");
  EXPECT_FALSE(isBundle(folder.path() / "Empty.bundle"));
}

TEST(APluginThatIsNoFolder, IsReported) {
  const auto failure = failureOf([] { findBundle("/nowhere", {"TandemTrim.bundle"}); });
  EXPECT_THAT(failure.what(), testing::HasSubstr("/nowhere"));
}

}  // namespace
}  // namespace tandemtrim::host
