#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

/// What the core includes and is linked with, so that it knows no toolkit and its arrows point one way.
namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Names = std::set<std::string>;

// The headers of this form that the sources of a folder include; those of other folders, for quoted ones.
std::map<std::string, Names> includes(const std::string& folder, const std::regex& form) {
  std::map<std::string, Names> found;
  for (const auto& file : std::filesystem::directory_iterator(std::filesystem::path(SOURCES) / folder)) {
    if (file.path().extension() != ".cpp" && file.path().extension() != ".hpp") continue;
    std::ifstream source(file.path());
    for (std::string line; std::getline(source, line);) {
      std::smatch match;
      if (std::regex_match(line, match, form)) found[match[1]].insert(file.path().filename());
    }
  }
  return found;
}

const std::regex kQuoted{R"(\s*#\s*include\s*"([^"]*)\".*)"};
const std::regex kForeign{R"(\s*#\s*include\s*<([^>]*[^a-z_0-9>][^>]*)>.*)"};

Names headersOfOtherFolders(const std::string& folder) {
  Names headers;
  for (const auto& [header, files] : includes(folder, kQuoted)) {
    if (!header.starts_with(folder + '/')) headers.insert(header);
  }
  return headers;
}

const testing::Matcher<std::string> kPlatformInterface = testing::MatchesRegex("platform/[a-z_0-9]+\\.hpp");

TEST(Architecture, LetsOneFileOfTheCoreKnowALibraryOfTheSystem) {
  EXPECT_THAT(includes("plugin", kForeign),
              UnorderedElementsAre(testing::Pair("cups/ppd.h", ElementsAre("ppd_attribute.cpp"))));
  for (const char* folder : {"model", "view"}) EXPECT_THAT(includes(folder, kForeign), testing::IsEmpty());
}

TEST(Architecture, LetsTheModelLookDownToTheSettingInformationOnly) {
  EXPECT_THAT(headersOfOtherFolders("model"),
              testing::Each(testing::AnyOf(kPlatformInterface, "plugin/common_info.hpp",
                                           "plugin/setting_names.hpp", "plugin/host_callback.hpp")));
}

TEST(Architecture, LetsTheViewLookDownToTheModelAndTheSettingInformationOnly) {
  EXPECT_THAT(headersOfOtherFolders("view"),
              testing::Each(testing::AnyOf(kPlatformInterface, "plugin/common_info.hpp",
                                           "plugin/setting_names.hpp", testing::StartsWith("model/"))));
}

TEST(Architecture, LetsThePlugInLookDownToTheViewControllerAndTheNamesOfSettings) {
  EXPECT_THAT(headersOfOtherFolders("plugin"),
              testing::Each(testing::AnyOf(kPlatformInterface, "view/view_controller.hpp",
                                           "view/view_names.hpp", "model/ticket_names.hpp")));
}

TEST(Architecture, LetsTheInterfacesOfThePlatformsIncludeNothingButEachOther) {
  EXPECT_THAT(includes("platform", kForeign), testing::IsEmpty());
  EXPECT_THAT(headersOfOtherFolders("platform"), testing::IsEmpty());
  for (const auto& [header, files] : includes("platform", kQuoted)) EXPECT_THAT(header, kPlatformInterface);
}

TEST(Architecture, LetsTheHostKnowTheInterfaceOfTheExtensionOnly) {
  EXPECT_THAT(headersOfOtherFolders("host"),
              testing::Each(testing::AnyOf(kPlatformInterface, testing::StartsWith("platform/linux/"),
                                           "platform/memory/panel_view.hpp")));
}

Names namesIn(const std::string& list) {
  std::istringstream names(list);
  return {std::istream_iterator<std::string>(names), {}};
}

TEST(Architecture, LinksTheCoreWithLibcupsAndNothingElse) {
  EXPECT_THAT(namesIn(CORE_LINKS),
              UnorderedElementsAre("tandemtrim_plugin", "tandemtrim_view", "tandemtrim_model",
                                   "tandemtrim_setting_info", "tandemtrim_margin_entry", "tandemtrim_values",
                                   "Cups::Cups"));
}

TEST(Architecture, LinksTheHostWithNothingOfTheCore) {
  const auto links = namesIn(HOST_LINKS);
  for (const char* part : {"plugin", "view", "model", "setting_info", "margin_entry", "memory"})
    EXPECT_THAT(links, testing::Not(testing::Contains(std::string("tandemtrim_") + part)));
}

TEST(Architecture, LinksTheRulesOfMarginEntryWithNothingButValues) {
  EXPECT_THAT(namesIn(MARGIN_ENTRY_LINKS),
              UnorderedElementsAre("tandemtrim_margin_entry", "tandemtrim_values"));
}

}  // namespace
}  // namespace tandemtrim::test
