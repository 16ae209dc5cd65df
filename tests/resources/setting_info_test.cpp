#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "plugin/setting_info/settings.hpp"
#include "tests/resources/files.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::resources {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr auto kDefaults = TTCIPlistMainKeyDefaultValue;

const auto kTexts = [] {
  std::vector<std::pair<std::string_view, std::string_view>> texts{
      {TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyValid},
      {TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyImageDirection},
      {TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyPosition},
      {TTCIPlistMainKeyId, TTCIPlistSubKeyPanelKind},
      {TTCIPlistMainKeyWording, TTCIPlistSubKeyMinLabelForValueRange},
      {TTCIPlistMainKeyWording, TTCIPlistSubKeyMaxLabelForValueRange},
  };
  for (const auto& setting : kSettings) texts.emplace_back(TTCIPlistMainKeyTicketKey, setting.subKey);
  return texts;
}();

constexpr std::array kBounds{TTCIPlistSubKeyMarginMin, TTCIPlistSubKeyMarginMax, TTCIPlistSubKeyMarginLimit};

std::string path(std::string_view mainKey, std::string_view subKey) {
  return std::string(mainKey).append(".").append(subKey);
}

class SettingInfo : public testing::Test {
 protected:
  platform::Dictionary settingInfo = propertyListAt(kSettingInfo);
};

TEST_F(SettingInfo, HasAStringWhereATextIsRead) {
  for (const auto& [mainKey, subKey] : kTexts) EXPECT_NE(textAt(settingInfo, mainKey, subKey), "") << subKey;
}

TEST_F(SettingInfo, HasAnIntegerWhereMillimetresAreRead) {
  for (const auto& margin : kMargins) integerAt(settingInfo, kDefaults, margin.subKey);
  for (const auto bound : kBounds) integerAt(settingInfo, kDefaults, bound);
}

TEST_F(SettingInfo, HasNoEntryThatIsNotRead) {
  std::set<std::string> expected;
  for (const auto& [mainKey, subKey] : kTexts) expected.insert(path(mainKey, subKey));
  for (const auto& margin : kMargins) expected.insert(path(kDefaults, margin.subKey));
  for (const auto bound : kBounds) expected.insert(path(kDefaults, bound));

  std::set<std::string> found;
  for (const auto& [mainKey, main] : settingInfo) {
    ASSERT_TRUE(main->as<platform::Dictionary>()) << mainKey;
    for (const auto& entry : *main->as<platform::Dictionary>()) found.insert(path(mainKey, entry.first));
  }
  EXPECT_EQ(found, expected);
}

TEST_F(SettingInfo, StoresTheSettingsUnderThePrintersKeywords) {
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "Valid"), "MVTandemTrim");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "ImageDirection"), "MVImageDirectionPriority");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "Position"), "MVPrintPosition");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "MarginTop"), "MVTopMargin");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "MarginBottom"), "MVBottomMargin");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "MarginLeft"), "MVLeftMargin");
  EXPECT_EQ(textAt(settingInfo, "TicketKey", "MarginRight"), "MVRightMargin");
}

TEST_F(SettingInfo, HasTandemTrimOffByDefault) {
  EXPECT_EQ(textAt(settingInfo, kDefaults, TTCIPlistSubKeyValid), TTCITandemTrimOff);
}

TEST_F(SettingInfo, HasDefaultsThatAreItemsOfTheMenus) {
  EXPECT_THAT(textAt(settingInfo, kDefaults, TTCIPlistSubKeyImageDirection),
              AnyOf(TTVCPopUpNameDirectionLEF, TTVCPopUpNameDirectionSEF));
  EXPECT_THAT(textAt(settingInfo, kDefaults, TTCIPlistSubKeyPosition),
              AnyOf(TTVCPopUpNamePositionLeft, TTVCPopUpNamePositionCenter, TTVCPopUpNamePositionRight));
}

TEST_F(SettingInfo, HasDefaultMarginsWithinTheLimitForPrintersWithoutMaximums) {
  const auto minimum = integerAt(settingInfo, kDefaults, TTCIPlistSubKeyMarginMin);
  const auto limit = integerAt(settingInfo, kDefaults, TTCIPlistSubKeyMarginLimit);
  for (const auto& margin : kMargins) {
    const auto value = integerAt(settingInfo, kDefaults, margin.subKey);
    EXPECT_TRUE(minimum <= value && value <= limit) << margin.subKey << " is " << value;
  }
}

TEST_F(SettingInfo, LetsATypedNumberBeginWithAnyDigit) {
  EXPECT_EQ(integerAt(settingInfo, kDefaults, TTCIPlistSubKeyMarginMin), 0);
}

TEST_F(SettingInfo, HasALimitForPrintersWithoutMaximumsBelowTheGreatestMargin) {
  EXPECT_LT(integerAt(settingInfo, kDefaults, TTCIPlistSubKeyMarginLimit),
            integerAt(settingInfo, kDefaults, TTCIPlistSubKeyMarginMax));
}

TEST_F(SettingInfo, HasTokensThatNeitherContainEachOtherNorLookLikeAFormatOrANumber) {
  const auto minimum = textAt(settingInfo, "Wording", "MinLabelForValueRange");
  const auto maximum = textAt(settingInfo, "Wording", "MaxLabelForValueRange");
  EXPECT_THAT(minimum, Not(HasSubstr(maximum)));
  EXPECT_THAT(maximum, Not(HasSubstr(minimum)));
  for (const auto& token : {minimum, maximum}) {
    EXPECT_EQ(token.find_first_of("%0123456789"), std::string::npos) << token;
  }
}

TEST_F(SettingInfo, NamesThePanelKindBelowTheBundlesIdentifier) {
  const auto info = propertyListAt(kContents + "/Info.plist");
  const auto identifier =
      platform::requiredText(platform::find(info, "CFBundleIdentifier"), "CFBundleIdentifier");
  EXPECT_THAT(textAt(settingInfo, "ID", "PanelKind"), StartsWith(identifier + "."));
}

}  // namespace
}  // namespace tandemtrim::resources
