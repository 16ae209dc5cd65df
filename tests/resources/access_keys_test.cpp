#include <algorithm>
#include <array>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <cwctype>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <libintl.h>

#include "adapters/linux/files/strings_table.hpp"
#include "host/dialog/texts/texts.hpp"
#include "tests/resources/files.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::resources {
namespace {

using platform::linux::StringsTable;

// The buttons of GTK's dialog. Their access keys also work on the panel's page.
constexpr std::array kButtonsOfGtk{"_Cancel", "_Print", "Pre_view"};
// The host's controls on the panel's page.
constexpr std::array kControlsOfHost{host::kHelpText, host::kUseForAllJobsText, host::kNotifyText,
                                     host::kCorrectText};
// The tabs of the dialog's pages, which have no access keys.
constexpr std::array kTabsOfGtk{"General", "Page Setup", "Job",     "Image Quality",
                                "Color",   "Finishing",  "Advanced"};

StringsTable tableAt(const std::string& path) {
  return platform::linux::parseStringsTable(contentsOf(path)).value_or(StringsTable());
}

// The text in lower case; only ASCII letters change.
std::string small(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char byte) { return std::tolower(byte); });
  return text;
}

// The letter after the underscore in lower case; empty without an underscore.
std::string letterOf(const std::string& marked) {
  const auto mark = marked.find('_');
  if (mark == std::string::npos) return "";
  const auto isContinued = [&](std::size_t at) { return (marked[at] & 0xC0) == 0x80; };
  auto end = mark + 2;
  while (end < marked.size() && isContinued(end)) ++end;
  return small(marked.substr(mark + 1, end - mark - 1));
}

bool isOneLetter(const std::string& text) {
  setlocale(LC_ALL, "C.UTF-8");
  std::array<wchar_t, 2> characters{};
  return std::mbstowcs(characters.data(), text.c_str(), characters.size()) == 1 &&
         std::iswalpha(static_cast<std::wint_t>(characters.front())) != 0;
}

// GTK's translation of a text; the English text where GTK's translations are not installed.
std::string textOfGtk(const std::string& language, const char* text) {
  const auto name = language == "zh-Hans" ? std::string("zh_CN") : language;
  setenv("LANGUAGE", name.c_str(), 1);
  // gettext reads the variable again only when the locale changes.
  setlocale(LC_ALL, "C");
  setlocale(LC_ALL, "C.UTF-8");
  return dgettext("gtk40", text);
}

class AccessKeys : public testing::TestWithParam<const char*> {
 protected:
  std::string language = GetParam();
  StringsTable ofPanel = tableAt(tablePath(GetParam()));
  StringsTable ofHost = tableAt(std::string(DIALOG_TEXTS) + '/' + GetParam() + ".lproj/Localizable.strings");

  // The titles on the panel's page, by their letters.
  std::map<std::string, std::vector<std::string>> titlesByLetter() const {
    std::map<std::string, std::vector<std::string>> found;
    const auto add = [&](const std::string& title, const std::string& letter) {
      found[letter].push_back(title);
    };
    for (const auto* text : kControlsOfHost) add(ofHost.at(text), letterOf(ofHost.at(text)));
    for (auto key : ofControls()) {
      add(std::string(key), small(ofPanel.at(std::string(key).append(kAccessKeySuffix))));
    }
    return found;
  }

  static std::vector<std::string_view> ofControls() {
    std::vector<std::string_view> keys(kTitleKeys.begin(), kTitleKeys.end());
    keys.push_back(TTVCLabelNameRestoreDefault);
    return keys;
  }
};

TEST_P(AccessKeys, AreOneLetterForEachControlWithoutDuplicates) {
  for (const auto& [letter, titles] : titlesByLetter()) {
    EXPECT_TRUE(isOneLetter(letter)) << '"' << letter << "\": " << testing::PrintToString(titles);
    EXPECT_EQ(titles.size(), 1U) << letter << ": " << testing::PrintToString(titles);
  }
}

TEST_P(AccessKeys, DifferFromThoseOfGtksButtonsTranslatedOrNot) {
  const auto own = titlesByLetter();
  for (const auto* button : kButtonsOfGtk) {
    for (const auto& shown : {std::string(button), textOfGtk(language, button)})
      EXPECT_EQ(own.count(letterOf(shown)), 0U) << shown << " and " << own.at(letterOf(shown)).front();
  }
  for (const auto* tab : kTabsOfGtk) EXPECT_EQ(letterOf(textOfGtk(language, tab)), "") << tab;
}

TEST_P(AccessKeys, AreLettersOfTheTitlesWhereTheLanguageHasLettersOnKeys) {
  if (testing::Matches(testing::AnyOf("ja", "ko", "zh-Hans"))(language)) return;
  for (const auto key : ofControls()) {
    const auto letter = ofPanel.at(std::string(key).append(kAccessKeySuffix));
    EXPECT_THAT(small(ofPanel.at(std::string(key))), testing::HasSubstr(small(letter)));
  }
}

INSTANTIATE_TEST_SUITE_P(In, AccessKeys, testing::ValuesIn(kLanguages), [](const auto& language) {
  std::string name = language.param;
  std::erase(name, '-');
  return name;
});

}  // namespace
}  // namespace tandemtrim::resources
