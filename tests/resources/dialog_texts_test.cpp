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

const std::string kLiterals = R"lit(((?:"(?:[^"\\\n]|\\.)*"\s*)+))lit";

// The text of adjacent string literals.
std::string textOf(const std::string& literals) {
  static const std::regex literal(R"lit("((?:[^"\\\n]|\\.)*)")lit");
  const std::sregex_iterator end;
  std::string text;
  for (std::sregex_iterator part(literals.begin(), literals.end(), literal); part != end; ++part) {
    const auto lines = std::regex_replace(part->str(1), std::regex(R"(\\n)"), "\n");
    text += std::regex_replace(lines, std::regex(R"(\\(.))"), "$1");
  }
  return text;
}

// The texts of a source: the constants k...Text and the literals that are marked as facts, raw or not.
std::set<std::string> textsIn(std::string source) {
  static const std::regex raw(R"lit(R"\((.*)\)"_fact)lit");
  static const std::regex marked(kLiterals + "_fact");
  static const std::regex constant(R"(constexpr const char\* k\w+Text =\s*)" + kLiterals);
  std::set<std::string> texts;
  const std::sregex_iterator end;
  for (std::sregex_iterator fact(source.begin(), source.end(), raw); fact != end; ++fact)
    texts.insert(fact->str(1));
  source = std::regex_replace(source, raw, "");
  for (const auto& form : {marked, constant}) {
    for (std::sregex_iterator found(source.begin(), source.end(), form); found != end; ++found) {
      // The operator's own definition has an empty literal.
      if (const auto text = textOf(found->str(1)); !text.empty()) texts.insert(text);
    }
  }
  return texts;
}

std::set<std::string> textsOfTheHost() {
  std::set<std::string> texts;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(HOST)) {
    const auto kind = entry.path().extension();
    if (kind == ".cpp" || kind == ".hpp") texts.merge(textsIn(contentsOf(entry.path())));
  }
  return texts;
}

std::set<std::string> keysOfTheDialog() {
  static const auto texts = textsOfTheHost();
  auto keys = texts;
  keys.insert(host::kHelpTexts.begin(), host::kHelpTexts.end());
  for (const auto& entry : host::kTroubleTexts) keys.insert(entry.second);
  return keys;
}

// All occurrences of "[name]" and the like, sorted by name.
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

TEST_P(DialogTexts, ExistForEveryKeyAndForNoOther) {
  auto missing = keysOfTheDialog();
  for (const auto& [key, text] : table) {
    EXPECT_EQ(missing.erase(key), 1U) << "no text of the dialog has the key " << key;
    EXPECT_NE(text, "") << key;
  }
  EXPECT_THAT(missing, testing::IsEmpty()) << "in host/dialog/texts/" << GetParam() << ".lproj";
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

TEST_P(DialogTexts, NameNoOptionsOfTheCommandLine) {
  for (const auto& [key, text] : table) EXPECT_THAT(text, testing::Not(testing::ContainsRegex(" -[a-z-]")));
}

// Users of the dialog may not know a terminal's commands and variables.
TEST_P(DialogTexts, NameNoVariablesOrCommandsOfATerminal) {
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
