#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "adapters/linux/files/strings_table.hpp"
#include "plugin/panel.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "tests/resources/files.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::resources {
namespace {

using platform::linux::StringsTable;
using testing::AnyOf;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using Keys = std::vector<std::string_view>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

const Keys kPositions(kPositionNames.begin(), kPositionNames.end());
const Keys kDirections(kDirectionNames.begin(), kDirectionNames.end());
const Keys kStates{TTCITandemTrimOn, TTCITandemTrimOff};
// The texts to which the program adds a colon, and which name the rows of the summary.
const Keys kLabels(kTitleKeys.begin() + 1, kTitleKeys.end());
// The text that a host shows when the user requests help.
constexpr std::string_view kHelp = "PanelHelp";
const Keys kOthers{kHelp,
                   TTPanelNameKey,
                   TTVCLabelNameValid,
                   TTVCLabelNameRestoreDefault,
                   TTVCLabelNameRangeFormat,
                   kContentInMarginsKey,
                   kContentInMarginKey};

// The texts on the panel's controls.
Keys ofControls() {
  Keys keys(kTitleKeys.begin(), kTitleKeys.end());
  keys.push_back(TTVCLabelNameRestoreDefault);
  return keys;
}

std::string accessKeyOf(std::string_view key) { return std::string(key).append(kAccessKeySuffix); }

// Every key that the program looks up.
std::set<std::string> keysOfTheProgram() {
  std::set<std::string> keys;
  for (const auto* group : {&kPositions, &kDirections, &kStates, &kLabels, &kOthers})
    keys.insert(group->begin(), group->end());
  for (const auto key : ofControls()) keys.insert(accessKeyOf(key));
  return keys;
}

StringsTable tableOf(std::string_view language) {
  auto table = platform::linux::parseStringsTable(contentsOf(tablePath(language)));
  EXPECT_TRUE(table) << "no string table at " << tablePath(language);
  return std::move(table).value_or(StringsTable());
}

std::size_t countOf(std::string_view text, std::string_view token) {
  std::size_t count = 0;
  for (auto at = text.find(token); at != std::string_view::npos; at = text.find(token, at + 1)) ++count;
  return count;
}

// C0, DEL and, in UTF-8, C1.
bool hasControlCharacter(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
    if (byte < 0x20 || byte == 0x7F || (byte == 0xC2 && next < 0xA0)) return true;
  }
  return false;
}

class StringTable : public testing::TestWithParam<const char*> {
 protected:
  std::string text(std::string_view key) const {
    const auto entry = table.find(key);
    return entry == table.end() ? std::string() : entry->second;
  }

  // One text for each key, unless two keys have the same.
  std::set<std::string> texts(const Keys& keys) const {
    std::set<std::string> found;
    for (const auto key : keys) found.insert(text(key));
    return found;
  }

  StringsTable table = tableOf(GetParam());
};

TEST_P(StringTable, HasATextForEachKeyThatTheProgramLooksUpAndNoOther) {
  std::set<std::string> keys;
  for (const auto& entry : table) keys.insert(entry.first);
  EXPECT_EQ(keys, keysOfTheProgram());
}

TEST_P(StringTable, IsUtf8WithAByteOrderMarkAndHasNoKeyTwice) {
  const auto bytes = contentsOf(tablePath(GetParam()));
  EXPECT_THAT(bytes, StartsWith(kByteOrderMark));
  std::istringstream lines(bytes.substr(kByteOrderMark.size()));
  std::size_t entries = 0;
  for (std::string line; std::getline(lines, line);) entries += line.starts_with('"') ? 1 : 0;
  EXPECT_EQ(entries, table.size());
}

TEST_P(StringTable, HasNoTextThatIsEmptyOrBeginsOrEndsWithABlank) {
  for (const auto& [key, value] : table) {
    ASSERT_THAT(value, Not(IsEmpty())) << key;
    EXPECT_THAT(value, Not(AnyOf(StartsWith(" "), EndsWith(" "), StartsWith("\u00A0"), EndsWith("\u00A0"))))
        << key;
  }
}

TEST_P(StringTable, HasNoControlCharacterInAText) {
  for (auto [key, value] : table) {
    if (key == kHelp) std::erase(value, '\n');
    EXPECT_FALSE(hasControlCharacter(value)) << key;
  }
}

TEST_P(StringTable, NamesBothBoundsOfARangeOnce) {
  const auto settingInfo = propertyListAt(kSettingInfo);
  const auto format = text(TTVCLabelNameRangeFormat);
  for (const auto token : {TTCIPlistSubKeyMinLabelForValueRange, TTCIPlistSubKeyMaxLabelForValueRange}) {
    EXPECT_EQ(countOf(format, textAt(settingInfo, TTCIPlistMainKeyWording, token)), 1U) << format;
  }
}

TEST_P(StringTable, HasEachPlaceholderOfTheNoteAboutThePageOnce) {
  EXPECT_EQ(countOf(text(kContentInMarginsKey), "[margins]"), 1U);
  EXPECT_EQ(countOf(text(kContentInMarginKey), "[margin]"), 1U);
  EXPECT_EQ(countOf(text(kContentInMarginKey), "[depth]"), 1U);
}

TEST_P(StringTable, HasDifferentTextsForTheItemsOfAMenuAndForTheStatesOfTheCheckBox) {
  for (const auto& group : {kPositions, kDirections, kStates})
    EXPECT_EQ(texts(group).size(), group.size()) << group.front();
}

TEST_P(StringTable, HasDifferentTitlesForTheRowsOfTheSummary) {
  auto rows = kLabels;
  rows.push_back(TTVCLabelNameValid);
  EXPECT_EQ(texts(rows).size(), rows.size());
}

TEST_P(StringTable, NamesTheControlsInTheHelpAsThePanelDoes) {
  for (const auto key :
       {TTVCLabelNameValid, TTVCLabelNameImageDirection, TTVCLabelNamePosition, TTVCLabelNameRestoreDefault})
    EXPECT_THAT(text(kHelp), testing::HasSubstr(text(key)));
}

TEST_P(StringTable, LeavesTheColonToTheProgram) {
  for (const auto& [key, value] : table) EXPECT_THAT(value, Not(AnyOf(EndsWith(":"), EndsWith("：")))) << key;
}

std::string nameOf(const testing::TestParamInfo<const char*>& language) {
  std::string name(language.param);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Of, StringTable, testing::ValuesIn(kLanguages), nameOf);

TEST(StringTables, TranslateEverythingButTheFunctionsName) {
  const auto english = tableOf("en");
  for (const std::string_view language : kLanguages) {
    if (language == "en") continue;
    for (const auto& [key, value] : tableOf(language)) {
      const auto original = english.find(key);
      if (key == TTPanelNameKey || key.ends_with(kAccessKeySuffix) || original == english.end()) continue;
      EXPECT_NE(value, original->second) << language << " " << key;
    }
  }
}

TEST(StringTables, KeepTheArabicRangeInReadingOrderAfterTheUnit) {
  constexpr auto kRightToLeftIsolate = "\u2067";
  constexpr auto kPopDirectionalIsolate = "\u2069";
  const auto arabic = tableOf("ar");
  const auto format = arabic.find(TTVCLabelNameRangeFormat);
  ASSERT_NE(format, arabic.end());
  EXPECT_THAT(format->second, StartsWith(kRightToLeftIsolate));
  EXPECT_THAT(format->second, EndsWith(kPopDirectionalIsolate));
}

}  // namespace
}  // namespace tandemtrim::resources
