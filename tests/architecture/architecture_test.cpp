#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

/// Which folder includes which, and what the core is linked with: the arrows of the system point one way.
namespace tandemtrim::test {
namespace {

using testing::UnorderedElementsAre;
using Names = std::set<std::string>;
using Arrows = std::map<std::string, Names>;
namespace fs = std::filesystem;

// Every folder with sources, and the other folders that it may include.
const Arrows kAllowed{
    {"platform", {}},
    {"plugin/setting_info", {"platform"}},
    {"model", {"platform", "plugin/setting_info"}},
    {"view", {"model", "platform", "plugin/setting_info"}},
    {"plugin", {"model", "platform", "plugin/setting_info", "view"}},

    {"adapters/shared", {"platform"}},
    {"adapters/module", {"platform"}},
    {"adapters/linux/files", {"platform"}},
    {"adapters/linux", {"adapters/linux/files", "platform"}},
    {"adapters/memory", {"adapters/module", "adapters/shared", "model", "platform", "plugin", "view"}},
    {"adapters/gtk/controls", {"adapters/shared", "platform", "view"}},
    {"adapters/gtk", {"adapters/gtk/controls", "adapters/module", "platform", "plugin", "view"}},
    {"adapters/appkit/gnustep", {}},
    {"adapters/appkit/foundation", {"adapters/appkit/gnustep", "platform"}},
    {"adapters/appkit", {"adapters/appkit/foundation", "platform", "plugin", "plugin/setting_info", "view"}},

    {"host", {"platform"}},
    {"host/applications", {"host"}},
    {"host/job", {"host", "platform"}},
    {"host/presets", {"host", "host/job"}},
    {"host/cups/connection", {"host", "host/job"}},
    {"host/cups", {"host", "host/cups/connection", "host/job"}},
    {"host/notifier", {"host", "host/cups", "host/cups/connection"}},
    {"host/panel",
     {"adapters/linux", "adapters/memory", "host", "host/cups", "host/cups/connection", "host/job",
      "platform"}},
    {"host/dialog/texts", {"adapters/linux", "host", "host/panel"}},
    {"host/preview", {}},
    {"host/dialog/preview",
     {"host", "host/cups/connection", "host/dialog/asking", "host/dialog/texts", "host/job", "host/panel",
      "host/preview", "platform"}},
    {"host/dialog/settings", {"host", "host/cups/connection", "host/dialog/texts", "host/job"}},
    {"host/dialog/asking", {"host", "host/cups/connection", "host/dialog/texts", "host/presets"}},
    {"host/dialog/file", {"host", "host/dialog/texts", "host/job"}},
    {"host/dialog/gtk", {"host/cups/connection", "host/dialog/settings", "host/job"}},
    {"host/dialog/notification", {"host", "host/cups", "host/dialog/texts", "host/notifier", "host/panel"}},
    {"host/dialog/panel",
     {"adapters/linux", "host", "host/cups/connection", "host/dialog/preview", "host/dialog/texts",
      "host/panel"}},
    {"host/dialog/presets",
     {"host", "host/dialog/asking", "host/dialog/panel", "host/dialog/texts", "host/panel", "host/presets"}},
    {"host/dialog",
     {"host", "host/cups", "host/cups/connection", "host/dialog/asking", "host/dialog/file",
      "host/dialog/gtk", "host/dialog/notification", "host/dialog/panel", "host/dialog/presets",
      "host/dialog/settings", "host/dialog/texts", "host/job", "host/panel"}},
    {"host/portal", {"host", "host/dialog", "host/job", "host/panel"}},
    {"host/start", {"host/panel"}},
    {"host/cli/arguments", {"host", "host/job", "host/presets"}},
    {"host/cli",
     {"host", "host/applications", "host/cli/arguments", "host/cups", "host/cups/connection", "host/dialog",
      "host/job", "host/panel", "host/presets"}},
};

std::string pathInProject(const fs::path& path) { return path.lexically_relative(SOURCES).generic_string(); }

std::vector<fs::path> sources() {
  constexpr std::array<const char*, 4> kEndings{".cpp", ".hpp", ".h", ".mm"};
  std::vector<fs::path> found;
  for (const char* part : {"adapters", "host", "model", "platform", "plugin", "view"}) {
    for (const auto& file : fs::recursive_directory_iterator(fs::path(SOURCES) / part)) {
      if (std::ranges::count(kEndings, file.path().extension()) != 0) found.push_back(file.path());
    }
  }
  return found;
}

const std::regex kOwn{R"re(\s*#\s*(?:include|import)\s*"([^"]*)".*)re"};
const std::regex kForeign{R"(\s*#\s*(?:include|import)\s*<([^>]*[^a-z_0-9>][^>]*)>.*)"};

// The headers of this form that a source includes.
Names headersIn(const fs::path& source, const std::regex& form) {
  Names headers;
  std::ifstream text(source);
  for (std::string line; std::getline(text, line);) {
    std::smatch match;
    if (std::regex_match(line, match, form)) headers.insert(match[1]);
  }
  return headers;
}

// The other folders that each folder includes.
Arrows arrows() {
  Arrows found;
  for (const auto& source : sources()) {
    const auto folder = pathInProject(source.parent_path());
    auto& reached = found[folder];
    for (const auto& header : headersIn(source, kOwn)) {
      const auto other = fs::path(header).parent_path().generic_string();
      if (other != folder) reached.insert(other);
    }
  }
  return found;
}

TEST(Architecture, HasOnlyAllowedArrows) {
  for (const auto& [folder, reached] : arrows()) {
    ASSERT_TRUE(kAllowed.contains(folder))
        << folder << " is not in the list of folders above: name it and what it may include";
    EXPECT_THAT(reached, testing::IsSubsetOf(kAllowed.at(folder))) << "in " << folder;
  }
}

TEST(Architecture, AllowsNoArrowThatIsNotNeeded) {
  const auto needed = arrows();
  for (const auto& [folder, allowed] : kAllowed) {
    ASSERT_TRUE(needed.contains(folder)) << folder;
    EXPECT_THAT(allowed, testing::IsSubsetOf(needed.at(folder))) << "in " << folder;
  }
}

TEST(Architecture, HasNoCycle) {
  auto rest = arrows();
  const auto isGone = [&](const std::string& folder) { return !rest.contains(folder); };
  const auto reachesTheRest = [&](const auto& arrow) { return !std::ranges::all_of(arrow.second, isGone); };
  while (!rest.empty()) {
    const auto lowest = std::ranges::find_if_not(rest, reachesTheRest);
    if (lowest == rest.end()) break;
    rest.erase(lowest);
  }
  EXPECT_THAT(rest, testing::IsEmpty());
}

// The arrows without those that follow from others.
Arrows drawable(const Arrows& all) {
  const std::function<bool(const std::string&, const std::string&)> reaches = [&](const auto& from,
                                                                                  const auto& to) {
    return std::ranges::any_of(all.at(from),
                               [&](const auto& next) { return next == to || reaches(next, to); });
  };
  Arrows drawn;
  for (const auto& [folder, others] : all) {
    for (const auto& other : others) {
      if (std::ranges::none_of(others, [&](const auto& between) { return reaches(between, other); }))
        drawn[folder].insert(other);
    }
  }
  return drawn;
}

// The diagram is in Mermaid's syntax: `folder --> other & other`.
TEST(Architecture, MatchesTheDiagramInTheDocumentation) {
  Arrows drawn;
  std::ifstream text(SOURCES "/docs/architecture.md");
  for (std::string line; std::getline(text, line);) {
    std::istringstream words(line);
    std::string folder;
    std::string word;
    if (!(words >> folder >> word) || word != "-->") continue;
    while (words >> word) {
      if (word != "&") drawn[folder].insert(word);
    }
  }
  const auto known = drawable(arrows());
  for (const auto& arrow : known) drawn.try_emplace(arrow.first);
  for (const auto& [folder, reached] : drawn)
    EXPECT_EQ(reached, known.contains(folder) ? known.at(folder) : Names())
        << "from " << folder << " in docs/architecture.md";
}

// A longer list is hard to survey. Inputs for fuzzing and built files do not count.
TEST(Architecture, HasNoFolderOfMoreThanTwentyFiles) {
  constexpr std::array<const char*, 5> kNotCounted{"corpus", "dictionaries", "__pycache__", "build", ".git"};
  std::map<std::string, int> files;
  for (auto entry = fs::recursive_directory_iterator(SOURCES); entry != fs::end(entry); ++entry) {
    if (entry->is_directory()) {
      if (std::ranges::count(kNotCounted, entry->path().filename()) != 0) entry.disable_recursion_pending();
    } else {
      ++files[pathInProject(entry->path().parent_path())];
    }
  }
  for (const auto& [folder, count] : files)
    EXPECT_LE(count, 20) << folder << ": put some of them into a folder below";
}

TEST(Architecture, LetsOnlyOneFileOfTheCoreIncludeALibraryOfTheSystem) {
  std::map<std::string, Names> found;
  for (const auto& source : sources()) {
    const auto path = pathInProject(source);
    if (path.starts_with("adapters/") || path.starts_with("host/")) continue;
    if (const auto headers = headersIn(source, kForeign); !headers.empty()) found[path] = headers;
  }
  EXPECT_THAT(found, testing::ElementsAre(testing::Pair("plugin/setting_info/ppd_attribute.cpp",
                                                        testing::ElementsAre("cups/ppd.h"))));
}

TEST(Architecture, LetsTheHostIncludeOnlyFourHeadersOfTheAdapters) {
  Names known;
  for (const auto& source : sources()) {
    if (!pathInProject(source).starts_with("host/")) continue;
    for (const auto& header : headersIn(source, kOwn)) {
      if (header.starts_with("adapters/")) known.insert(header);
    }
  }
  EXPECT_THAT(known,
              UnorderedElementsAre("adapters/linux/bundle.hpp", "adapters/linux/bundle_info.hpp",
                                   "adapters/linux/print_settings.hpp", "adapters/memory/panel_view.hpp"));
}

// A family's names come from its bundle.
TEST(Architecture, KeepsTheNamesOfEveryFamilyOutOfTheHost) {
  const std::regex kOfAFamily{
      R"re("[^"]*\b(MV\w+|LN\w+|Valid|Direction|Position|Top|Bottom|Left|Right|TandemTrim|Foldline)\b[^"]*")re"};
  for (const auto& source : sources()) {
    if (!pathInProject(source).starts_with("host/")) continue;
    std::ifstream text(source);
    for (std::string line; std::getline(text, line);)
      EXPECT_FALSE(std::regex_search(line, kOfAFamily)) << pathInProject(source) << ": " << line;
  }
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
