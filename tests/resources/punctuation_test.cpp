#include <regex>
#include <string>

#include <gmock/gmock.h>

#include "adapters/linux/files/strings_table.hpp"
#include "tests/resources/files.hpp"

namespace tandemtrim::resources {
namespace {

struct Marks {
  const char* language;
  // Marks that no text of the language has: those of typewriters and of other languages, and quotation marks
  // that the language has but these texts do not use, such as „ in German. Some languages allow a comma
  // before a digit, as in page numbers, a colon after a digit, as in times, and a parenthesis before an
  // underscore, as in access keys.
  const char* wrong;
};

const Marks kMarks[] = {
    {"de", R"("|'|“|”|„|‚|‘)"},
    {"fr", R"("|'|“|”|„| [:;?!%]| »|« |\w[;?!]|[a-z]:)"},
    {"es", R"("|'|“|”|„)"},
    {"it", R"("|'|“|”|„)"},
    {"nl", R"("|'|“|”|„|«|»)"},
    {"ja", R"("|'|“|”|,[^0-9]|[^0-9]:|\((?!_)|[^_A-Z]\)|\?|;)"},
    {"zh-Hans", R"("|'|「|」|,[^0-9]|[^0-9]:|\((?!_)|[^_A-Z]\)|\?|;)"},
    {"ko", R"("|'|‘|’|「|」)"},
    {"ar", R"("|'|“|”|,[^0-9]|\?|;)"},
};

class Punctuation : public testing::TestWithParam<Marks> {};

TEST_P(Punctuation, IsThatOfTheLanguageInThePanelAndTheDialog) {
  const std::regex wrong(GetParam().wrong);
  const std::string language = GetParam().language;
  for (const auto& path :
       {tablePath(language), std::string(DIALOG_TEXTS) + '/' + language + ".lproj/Localizable.strings"}) {
    const auto table = platform::linux::parseStringsTable(contentsOf(path));
    ASSERT_TRUE(table) << path;
    for (const auto& [key, text] : *table) {
      std::smatch found;
      EXPECT_FALSE(std::regex_search(text, found, wrong)) << '<' << found.str() << "> in: " << text;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(In, Punctuation, testing::ValuesIn(kMarks), [](const auto& marks) {
  std::string name = marks.param.language;
  std::erase(name, '-');
  return name;
});

}  // namespace
}  // namespace tandemtrim::resources
