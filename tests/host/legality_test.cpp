#include "host/legality.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using platform::memory::ControlKind;
using platform::memory::ControlState;

ControlState box(double min, double max) {
  ControlState control;
  control.kind = ControlKind::textBox;
  control.min = min;
  control.max = max;
  return control;
}

ControlState menu() {
  ControlState control;
  control.kind = ControlKind::popUp;
  control.choices = {{"Links", "Left"}, {"Mitte", "Center"}, {"ohne Wert", std::nullopt}};
  return control;
}

ControlState checkBox() {
  ControlState control;
  control.kind = ControlKind::checkBox;
  return control;
}

struct Judgement {
  ControlState control;
  std::string value;
  bool legal;
};

class AStoredValue : public testing::TestWithParam<Judgement> {};

TEST_P(AStoredValue, IsLegalWhenAPersonCouldSetIt) {
  const auto& [control, value, legal] = GetParam();
  EXPECT_EQ(isLegal(control, value), legal) << '"' << value << '"';
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
                    Judgement{menu(), "ohne Wert", false}, Judgement{menu(), "", false},
                    Judgement{checkBox(), "On", true}, Judgement{checkBox(), "Off", true},
                    Judgement{checkBox(), "on", false}, Judgement{checkBox(), "true", false}));

TEST(AllowedValues, AreNamedAsAPersonReadsThem) {
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

TEST(ASuggestedValue, StaysAtTheLowBoundWhereTheBoundsCross) {
  EXPECT_EQ(suggestedValue(box(10, 5), "7"), "10");
}

TEST(ANumbersText, IsDecimalAndNeverScientific) {
  EXPECT_EQ(decimalText(30), "30");
  EXPECT_EQ(decimalText(0), "0");
  EXPECT_EQ(decimalText(1e15), "1000000000000000");
}

TEST(ADecimalText, StaysWithin64BitsAsTheLimitsDo) {
  EXPECT_EQ(decimalText(9.3e18), "9223372036854775807");
  EXPECT_EQ(decimalText(-2.5), "-2");
}

}  // namespace
}  // namespace tandemtrim::host
