#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

class MarginEntry : public ForEachSide {
 protected:
  void enter(const std::string& typed, const std::string& expected) {
    ASSERT_TRUE(panel->replaceText(side.textBox, typed));
    EXPECT_EQ(text(side.textBox), expected) << '"' << typed << '"';
    EXPECT_EQ(text(side.stepper), expected) << '"' << typed << '"';
  }
  [[nodiscard]] std::string limit() const { return std::to_string(side.limit); }
};

TEST_P(MarginEntry, KeepsTheTypedDigitsAndClampsTheNumber) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  enter("", "0");
  enter("7", "7");
  enter("007", "7");
  enter("1a0", "10");
  enter("-5", "5");
  enter("+5", "5");
  enter(" 3", "3");
  enter("3 ", "3");
  enter("12.5", limit());
  enter("1,5", std::to_string(std::min(15, side.limit)));
  enter("abc", "0");
  enter("0", "0");
  enter("0000", "0");
  enter(limit(), limit());
  enter(std::to_string(side.limit + 1), limit());
  enter("99999999999999999999", limit());
  enter("00000000000000000000000000000004", "4");
}

TEST_P(MarginEntry, RemovesDigitsOfOtherScriptsAndAllOtherCharacters) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  enter("\xEF\xBC\x94", "0");  // full-width 4
  enter(
      "\xEF\xBC\x94"
      "5",
      "5");                // full-width 4, then 5
  enter("\xD9\xA3", "0");  // Arabic-Indic 3
  enter(
      "1\xF0\x9D\x9F\x8E"
      "0",
      "10");  // mathematical bold 0 between 1 and 0
  enter(
      "\xC2\xA0"
      "6",
      "6");  // no-break space, then 6
}

// A comparison of texts by the locale finds each digit equal to the number that replaces it.
TEST_P(MarginEntry, RemovesDigitsThatCompareEqualToTheirCorrection) {
  for (const auto& [minimum, digits] :
       {std::pair{"0", std::vector{"\uFF10", "\U0001D7CE", "\u2070", "\u2080", "\u24EA"}},
        std::pair{"5", std::vector{"\uFF15", "\U0001D7D3", "\u2075", "\u2085", "\u2464"}}}) {
    scene.settingInfo["DefaultValue.MarginMin"] = std::string("<integer>") + minimum + "</integer>";
    ASSERT_NO_FATAL_FAILURE(showOn());
    for (const auto* const digit : digits) {
      enter(digit, minimum);
      panel->save();
      EXPECT_EQ(dialog->stored(side.key), minimum) << digit;
    }
    panel.reset();
  }
}

// A second correction would read 2.5 as 25.
TEST_P(MarginEntry, IsCorrectedOnceHoweverOftenTheViewIsRequested) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<real>2.5</real>";
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (const char* typed : {"1", "0"}) {
    panel->replaceText(side.textBox, typed);
    EXPECT_EQ(text(side.textBox), "2.5") << typed;
    ASSERT_TRUE(panel->panelView());
  }
}

TEST_P(MarginEntry, CorrectsKeyByKey) {
  scene.stored[side.key] = "0";
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->type(side.textBox, "1");
  EXPECT_EQ(text(side.textBox), "1");
  panel->type(side.textBox, "a");
  EXPECT_EQ(text(side.textBox), "1");
  panel->type(side.textBox, "0");
  EXPECT_EQ(text(side.textBox), "10");
  panel->type(side.textBox, "00");
  EXPECT_EQ(text(side.textBox), limit());
}

TEST_P(MarginEntry, LeavesTheMinimumWhenEverythingIsDeleted) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>5</integer>";
  scene.stored[side.key] = "9";
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_TRUE(panel->backspace(side.textBox));
  EXPECT_EQ(text(side.textBox), "5");
  EXPECT_EQ(text(side.stepper), "5");
}

TEST_P(MarginEntry, LeavesZeroWhenEverythingIsDeletedAndTheMinimumIsZero) {
  scene.stored[side.key] = "9";
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_TRUE(panel->backspace(side.textBox));
  EXPECT_EQ(text(side.textBox), "0");
}

TEST_P(MarginEntry, TouchesItsOwnSideOnly) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->replaceText(side.textBox, "9");
  panel->save();
  for (const auto& other : kSides) {
    if (other.name == side.name) continue;
    EXPECT_EQ(text(other.textBox), other.defaultText) << other;
    EXPECT_EQ(text(other.stepper), other.defaultText) << other;
    EXPECT_EQ(dialog->stored(other.key), other.defaultText) << other;
  }
  EXPECT_EQ(dialog->stored(side.key), "9");
}

TEST_P(MarginEntry, IsSavedWithoutLeavingTheBox) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->replaceText(side.textBox, "");
  panel->type(side.textBox, "8");
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), "8");
}

TEST_P(MarginEntry, ClampsToTheMaximumWhereTheLimitIsALargerString) {
  scene.ppdAttributes.reset();
  scene.settingInfo["DefaultValue.MarginLimit"] = "<string>12</string>";
  scene.settingInfo["DefaultValue.MarginMax"] = "<integer>11</integer>";
  ASSERT_NO_FATAL_FAILURE(showOn());
  enter("99", "11");
}

TEST_P(MarginEntry, AcceptsTheSameNumberObjectInItsRangeAndTheBoundsObjectOutside) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<real>2.5</real>";
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(panel->verifyValue(side.textBox, 1), Accepted::minimum);
  EXPECT_EQ(panel->verifyValue(side.textBox, 7), Accepted::itself);
  EXPECT_EQ(panel->verifyValue(side.textBox, 7000), Accepted::maximum);
  for (const auto& other : kSides)
    EXPECT_EQ(panel->minimumIdentity(side.textBox), panel->minimumIdentity(other.textBox)) << other;
}

INSTANTIATE_TEST_SUITE_P(Sides, MarginEntry, testing::ValuesIn(kSides), sideName);

}  // namespace
}  // namespace tandemtrim::conformance
