#include "host/job/legality.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;

PanelSetting box(std::int64_t minimum, std::int64_t maximum) {
  PanelSetting setting;
  setting.kind = PanelSetting::Kind::number;
  setting.minimum = minimum;
  setting.maximum = maximum;
  return setting;
}

PanelSetting menu() {
  PanelSetting setting;
  setting.kind = PanelSetting::Kind::choice;
  setting.choices = {{"Left", "Links"}, {"Center", "Mitte"}};
  return setting;
}

PanelSetting checkBox() {
  PanelSetting setting;
  setting.kind = PanelSetting::Kind::onOff;
  setting.choices = {{"On", "Ein"}, {"Off", "Aus"}};
  return setting;
}

struct Judgement {
  PanelSetting setting;
  std::string value;
  bool legal;
};

class AStoredValue : public testing::TestWithParam<Judgement> {};

TEST_P(AStoredValue, IsLegalWhenAUserCouldSetIt) {
  const auto& [setting, value, legal] = GetParam();
  EXPECT_EQ(isLegal(setting, value), legal) << '"' << value << '"';
}

INSTANTIATE_TEST_SUITE_P(
    Legality, AStoredValue,
    testing::Values(Judgement{box(0, 30), "0", true}, Judgement{box(0, 30), "30", true},
                    Judgement{box(0, 30), "31", false}, Judgement{box(5, 30), "4", false},
                    Judgement{box(-5, 5), "-5", true}, Judgement{box(0, 30), "", false},
                    Judgement{box(0, 30), "05", false}, Judgement{box(0, 30), "+5", false},
                    Judgement{box(0, 30), " 5", false}, Judgement{box(0, 30), "5 ", false},
                    Judgement{box(0, 30), "5.0", false}, Judgement{box(0, 30), "-0", false},
                    Judgement{box(0, 30), "abc", false}, Judgement{box(0, 30), "99999999999999999999", false},
                    Judgement{menu(), "Left", true}, Judgement{menu(), "Center", true},
                    Judgement{menu(), "left", false}, Judgement{menu(), "Links", false},
                    Judgement{menu(), "", false}, Judgement{checkBox(), "On", true},
                    Judgement{checkBox(), "Off", true}, Judgement{checkBox(), "on", false},
                    Judgement{checkBox(), "true", false}));

TEST(AllowedValues, AreNamedAsAUserTypesThem) {
  EXPECT_EQ(allowedValues(box(0, 30)), "0 to 30");
  EXPECT_EQ(allowedValues(menu()), "Left, Center");
  EXPECT_EQ(allowedValues(checkBox()), "On, Off");
}

TEST(ASuggestedValue, IsTheNearestOne) {
  EXPECT_EQ(suggestedValue(box(0, 30), "99"), "30");
  EXPECT_EQ(suggestedValue(box(2, 30), "-7"), "2");
  EXPECT_EQ(suggestedValue(box(0, 30), "05"), "5");
  EXPECT_EQ(suggestedValue(menu(), "Top"), "Left");
  EXPECT_EQ(suggestedValue(menu(), "center"), "Center");
  EXPECT_EQ(suggestedValue(checkBox(), "on"), "On");
  EXPECT_EQ(suggestedValue(checkBox(), "maybe"), "Off");
}

TEST(ASuggestedValue, IsEmptyIfThePanelHasNoChoices) {
  auto empty = menu();
  empty.choices.clear();
  EXPECT_EQ(suggestedValue(empty, "Left"), "");
}

TEST(APanel, IsSwitchedOnUnlessItHasASwitchThatIsOff) {
  auto onOff = checkBox();
  EXPECT_TRUE(isSwitchedOn({box(0, 30)}));
  onOff.value = "On";
  EXPECT_TRUE(isSwitchedOn({box(0, 30), onOff}));
  onOff.value = "Off";
  EXPECT_FALSE(isSwitchedOn({box(0, 30), onOff}));
}

TEST(ASuggestedValue, IsTheLowBoundIfTheBoundsCross) { EXPECT_EQ(suggestedValue(box(10, 5), "7"), "10"); }

}  // namespace
}  // namespace tandemtrim::host
