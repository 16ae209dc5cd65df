#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

struct PpdValue {
  const char* value;
  const char* limit;
  friend std::ostream& operator<<(std::ostream& out, const PpdValue& one) {
    return out << '"' << one.value << '"';
  }
};

// Scene: minimum 2, maximum 60, limit without a PPD value 30.
class MarginLimit : public ForEachSide {
 protected:
  void SetUp() override { scene.settingInfo["DefaultValue.MarginMin"] = "<integer>2</integer>"; }
  [[nodiscard]] std::string attribute() const { return "MVMaxTandemTrimMargin" + side.name; }
  [[nodiscard]] std::string rangeUpTo(const std::string& limit) const { return "mm   from 2 up to " + limit; }
};

TEST_P(MarginLimit, ComesFromThePpdClampedToTheCommonBounds) {
  const PpdValue values[] = {
      {"25", "25"},  {" 25mm", "25"}, {"0", "2"},     {"abc", "2"},
      {"", "2"},     {"-5", "2"},     {"61", "60"},   {"60", "60"},
      {"2", "2"},    {"+7", "7"},     {"12.9", "12"}, {"99999999999999999999", "60"},
      {"0x10", "2"}, {"007", "7"},    {"%n%s", "2"},  {"-99999999999999999999", "2"},
  };
  for (const auto& value : values) {
    scene.ppdAttributes->insert_or_assign(attribute(), value.value);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(text(side.limitLabel), rangeUpTo(value.limit)) << value;
    EXPECT_EQ(panel->look(side.stepper).max, std::stod(value.limit)) << value;
    panel.reset();
  }
}

TEST_P(MarginLimit, ThatIsNotUtf8CountsAsMissing) {
  scene.ppdAttributes->insert_or_assign(attribute(), "25\xE9");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), rangeUpTo("30"));
}

TEST_P(MarginLimit, FallsBackToTheSettingInfoWhenThePpdLacksIt) {
  scene.ppdAttributes->erase(attribute());
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), rangeUpTo("30"));
}

TEST_P(MarginLimit, FallsBackToTheSettingInfoWithoutAnyPpd) {
  scene.ppdAttributes.reset();
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), rangeUpTo("30"));
  EXPECT_EQ(panel->look(side.stepper).max, 30);
}

TEST_P(MarginLimit, OfTheSettingInfoIsClampedToTheBoundsToo) {
  scene.ppdAttributes.reset();
  scene.settingInfo["DefaultValue.MarginLimit"] = "<integer>500</integer>";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), rangeUpTo("60"));
}

TEST_P(MarginLimit, IsTheMinimumWhereNeitherThePpdNorTheSettingInfoHasOne) {
  scene.ppdAttributes.reset();
  scene.settingInfo.erase("DefaultValue.MarginLimit");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), rangeUpTo("2"));
}

TEST_P(MarginLimit, ChecksTheMinimumFirstWhereTheBoundsCross) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>20</integer>";
  scene.settingInfo["DefaultValue.MarginMax"] = "<integer>10</integer>";
  for (const auto& [value, limit] : {std::pair{"19", "20"}, std::pair{"20", "10"}, std::pair{"21", "10"}}) {
    scene.ppdAttributes->insert_or_assign(attribute(), value);
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(text(side.limitLabel), std::string("mm   from 20 up to ") + limit) << value;
    panel.reset();
  }
}

// A bound that the setting info lacks compares as 0. Making the panel fails only if the missing bound itself
// would be a side's limit.
TEST_P(MarginLimit, CountsAMissingBoundAsZeroAndFailsOnlyWhereThatWouldBeTheLimit) {
  struct Case {
    const char* missing;
    const char* value;
    bool isMade;
  };
  const Case cases[] = {{"DefaultValue.MarginMax", "0", true},  {"DefaultValue.MarginMax", "-7", true},
                        {"DefaultValue.MarginMax", "2", false}, {"DefaultValue.MarginMin", "0", true},
                        {"DefaultValue.MarginMin", "61", true}, {"DefaultValue.MarginMin", "-1", false}};
  const auto whole = scene.settingInfo;
  for (const auto& [missing, value, isMade] : cases) {
    scene.settingInfo = whole;
    scene.settingInfo["DefaultValue.MarginMin"] = "<integer>-5</integer>";
    scene.settingInfo.erase(missing);
    for (auto& [keyword, maximum] : *scene.ppdAttributes) maximum = "0";
    scene.ppdAttributes->insert_or_assign(attribute(), value);
    dialog = openDialog(scene);
    if (isMade)
      EXPECT_NE(dialog->panelForType(kType, true), nullptr) << missing << ' ' << value;
    else
      EXPECT_ANY_THROW((void)dialog->panelForType(kType, true)) << missing << ' ' << value;
  }
}

TEST_P(MarginLimit, ShowsABoundInItsShortestFormAndComparesItTruncated) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<real>2.5</real>";
  scene.settingInfo["DefaultValue.MarginMax"] = "<real>5.0</real>";
  scene.ppdAttributes->insert_or_assign(attribute(), "9");
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(text(side.limitLabel), "mm   from 2.5 up to 5");
  EXPECT_EQ(panel->look(side.stepper).min, 2);
  EXPECT_EQ(panel->look(side.stepper).max, 5);
  panel->replaceText(side.textBox, "2");
  EXPECT_EQ(text(side.textBox), "2");
  panel->replaceText(side.textBox, "1");
  EXPECT_EQ(text(side.textBox), "2.5");
}

TEST_P(MarginLimit, ReadsTrueAsOne) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<true/>";
  scene.ppdAttributes->insert_or_assign(attribute(), "0");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.limitLabel), "mm   from 1 up to 1");
}

// The file lists the bottom, left, right and top side in this order.
using PpdFile = Conformance;

TEST_F(PpdFile, WithAnUnclosedQuoteLosesTheLinesAfterItAndFallsBackForThem) {
  scene.ppdAttributes->clear();
  scene.ppdAttributes->emplace("MVMaxTandemTrimMarginBottom",
                               "40\n*MVMaxTandemTrimMarginLeft: \"20\"\n*MVMaxTandemTrimMarginRight: "
                               "\"10\"\n*MVMaxTandemTrimMarginTop: \"50");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginLimitBottom"), "mm   from 0 up to 40");
  for (const char* label : {"labelMarginLimitTop", "labelMarginLimitLeft", "labelMarginLimitRight"})
    EXPECT_EQ(text(label), "mm   from 0 up to 30") << label;
}

TEST_F(PpdFile, ThatIsReplacedWhileADialogIsOpenCountsForTheNextDialog) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  scene.ppdAttributes->insert_or_assign("MVMaxTandemTrimMarginTop", "15");
  ASSERT_TRUE(scene.writePpd());
  EXPECT_EQ(text("labelMarginLimitTop"), "mm   from 0 up to 50");
  panel->replaceText("textBoxMarginTop", "99");
  EXPECT_EQ(text("textBoxMarginTop"), "50");
  const auto next = openDialog(scene);
  const auto nextPanel = next->panelForType(kType, true);
  ASSERT_TRUE(nextPanel->panelView());
  EXPECT_EQ(nextPanel->look("labelMarginLimitTop").text, "mm   from 0 up to 15");
  // The open panel and another panel of the same dialog keep the limits of the file that was opened.
  panel->replaceText("textBoxMarginTop", "48");
  EXPECT_EQ(text("textBoxMarginTop"), "48");
  panel = dialog->panelForType(kType, true);
  ASSERT_TRUE(panel->panelView());
  EXPECT_EQ(text("labelMarginLimitTop"), "mm   from 0 up to 50");
}

INSTANTIATE_TEST_SUITE_P(Sides, MarginLimit, testing::ValuesIn(kSides), sideName);

}  // namespace
}  // namespace tandemtrim::conformance
