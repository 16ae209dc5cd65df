#include "plugin/setting_info/settings.hpp"

#include <vector>

#include <gmock/gmock.h>

#include "model/ticket_names.hpp"
#include "view/margin_entry.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

using testing::ElementsAre;
using Words = std::vector<std::string_view>;

// The names of a setting in every layer: PPD keyword, sub key, ticket name, key of the title.
Words wordsOf(std::size_t setting) {
  const auto& row = kSettings.at(setting);
  return {row.keyword, row.subKey, kTicketNames.at(setting), kTitleKeys.at(setting)};
}

TEST(Settings, HaveTheNamesOfEachLayerInTheSameOrder) {
  ASSERT_EQ(kSettings.size(), 7U);
  EXPECT_THAT(wordsOf(0), ElementsAre("MVTandemTrim", "Valid", "Valid", "EnableTandemTrim"));
  EXPECT_THAT(wordsOf(1),
              ElementsAre("MVImageDirectionPriority", "ImageDirection", "Direction", "ImageDirection"));
  EXPECT_THAT(wordsOf(2), ElementsAre("MVPrintPosition", "Position", "Position", "InformPrintingPosition"));
  EXPECT_THAT(wordsOf(3), ElementsAre("MVTopMargin", "MarginTop", "Top", "TopMargin"));
  EXPECT_THAT(wordsOf(4), ElementsAre("MVBottomMargin", "MarginBottom", "Bottom", "BottomMargin"));
  EXPECT_THAT(wordsOf(5), ElementsAre("MVLeftMargin", "MarginLeft", "Left", "LeftMargin"));
  EXPECT_THAT(wordsOf(6), ElementsAre("MVRightMargin", "MarginRight", "Right", "RightMargin"));
}

TEST(Settings, HaveAMarginForEachSideAndItsOutlets) {
  constexpr std::array<std::pair<Side, const char*>, 4> kExpected{
      {{kTop, "Top"}, {kBottom, "Bottom"}, {kLeft, "Left"}, {kRight, "Right"}}};
  ASSERT_EQ(kSides, kExpected.size());
  for (const auto& [side, word] : kExpected) {
    const std::string name = word;
    EXPECT_EQ(kMargins[side].marginName, name);
    EXPECT_EQ(kMargins[side].keyword, "MV" + name + "Margin");
    EXPECT_EQ(kMargins[side].ppdKey, "MVMaxTandemTrimMargin" + name);
    EXPECT_EQ(margin_entry::ticketName(name), marginsOf(kTicketNames)[side]);
    const auto& outlets = kMarginOutlets.at(side);
    EXPECT_THAT((Words{outlets.label, outlets.limitLabel, outlets.textBox, outlets.stepper}),
                ElementsAre("labelMargin" + name, "labelMarginLimit" + name, "textBoxMargin" + name,
                            "stepperMargin" + name));
  }
}

}  // namespace
}  // namespace tandemtrim
