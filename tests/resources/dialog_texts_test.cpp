#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "adapters/linux/files/strings_table.hpp"
#include "host/dialog/texts/texts.hpp"
#include "tests/resources/files.hpp"

namespace tandemtrim::resources {
namespace {

using platform::linux::StringsTable;

// The texts that are marked as facts in a source: a raw literal or others, one behind the other, and the mark
// behind them.
std::set<std::string> factsIn(std::string source) {
  static const std::regex raw(R"lit(R"\((.*)\)"_fact)lit");
  static const std::regex marked(R"lit(((?:"(?:[^"\\\n]|\\.)*"\s*)+)_fact)lit");
  static const std::regex literal(R"lit("((?:[^"\\\n]|\\.)*)")lit");
  std::set<std::string> facts;
  const std::sregex_iterator end;
  for (std::sregex_iterator fact(source.begin(), source.end(), raw); fact != end; ++fact)
    facts.insert(fact->str(1));
  source = std::regex_replace(source, raw, "");
  for (std::sregex_iterator fact(source.begin(), source.end(), marked); fact != end; ++fact) {
    const auto literals = fact->str(1);
    std::string text;
    for (std::sregex_iterator part(literals.begin(), literals.end(), literal); part != end; ++part)
      text += std::regex_replace(part->str(1), std::regex(R"(\\(.))"), "$1");
    // The operator itself marks an empty one.
    if (!text.empty()) facts.insert(text);
  }
  return facts;
}

std::set<std::string> factsOfTheHost() {
  std::set<std::string> facts;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(HOST)) {
    const auto kind = entry.path().extension();
    if (kind == ".cpp" || kind == ".hpp") facts.merge(factsIn(contentsOf(entry.path())));
  }
  return facts;
}

std::set<std::string> keysOfTheDialog() {
  std::set<std::string> keys(host::kTexts.begin(), host::kTexts.end());
  keys.insert(host::kHelpTexts.begin(), host::kHelpTexts.end());
  for (const auto& entry : host::kTroubleTexts) keys.insert(entry.second);
  static const auto facts = factsOfTheHost();
  keys.insert(facts.begin(), facts.end());
  return keys;
}

// "[name]" and the like, in the order of their names; as often as they are there.
std::vector<std::string> placeholdersOf(const std::string& text) {
  std::vector<std::string> placeholders;
  for (auto begin = text.find('['); begin != std::string::npos; begin = text.find('[', begin + 1))
    placeholders.push_back(text.substr(begin, text.find(']', begin) + 1 - begin));
  std::ranges::sort(placeholders);
  return placeholders;
}

class DialogTexts : public testing::TestWithParam<const char*> {
 protected:
  StringsTable table =
      platform::linux::parseStringsTable(
          contentsOf(std::string(DIALOG_TEXTS) + '/' + GetParam() + ".lproj/Localizable.strings"))
          .value_or(StringsTable());
};

TEST_P(DialogTexts, AreThereForEveryKeyAndForNoOther) {
  std::set<std::string> keys;
  for (const auto& [key, text] : table) {
    keys.insert(key);
    EXPECT_NE(text, "") << key;
  }
  EXPECT_EQ(keys, keysOfTheDialog());
}

TEST_P(DialogTexts, HaveThePlaceholdersOfTheEnglishOnes) {
  for (const auto& [key, text] : table) EXPECT_EQ(placeholdersOf(text), placeholdersOf(key)) << text;
}

TEST_P(DialogTexts, AreTranslated) {
  const bool english = GetParam() == std::string("en");
  for (const auto& key : keysOfTheDialog()) {
    if (key == host::kListSeparatorText) continue;
    EXPECT_EQ(table[key] == key, english) << key;
  }
}

TEST_P(DialogTexts, AdviseNoOptionsOfTheCommandLine) {
  for (const auto& [key, text] : table) EXPECT_THAT(text, testing::Not(testing::ContainsRegex(" -[a-z-]")));
}

// A dialog has no environment and no command line.
TEST_P(DialogTexts, NameNothingOfATerminal) {
  for (const auto& [key, text] : table)
    EXPECT_THAT(text, testing::Not(testing::ContainsRegex("LPDEST|lpstat|lpadmin|cupsenable|cupsaccept")))
        << key;
}

INSTANTIATE_TEST_SUITE_P(In, DialogTexts, testing::ValuesIn(kLanguages), [](const auto& language) {
  std::string name = language.param;
  std::erase(name, '-');
  return name;
});

}  // namespace
}  // namespace tandemtrim::resources
