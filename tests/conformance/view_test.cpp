#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

const std::vector<std::string> kGreyedControls{
    "directionPopUp",    "positionPopUp",      "textBoxMarginTop", "textBoxMarginBottom",
    "textBoxMarginLeft", "textBoxMarginRight", "stepperMarginTop", "stepperMarginBottom",
    "stepperMarginLeft", "stepperMarginRight", "defaultButton"};
const std::vector<std::string> kLabels{
    "labelDirection",       "labelPosition",        "labelMarginTop",      "labelMarginBottom",
    "labelMarginLeft",      "labelMarginRight",     "labelMarginLimitTop", "labelMarginLimitBottom",
    "labelMarginLimitLeft", "labelMarginLimitRight"};

class PanelView : public Conformance {
 protected:
  void expectLive(bool live) {
    for (const auto& outlet : kGreyedControls) EXPECT_EQ(enabled(outlet), live) << outlet;
    for (const auto& outlet : kLabels) {
      EXPECT_EQ(panel->look(outlet).color, live ? "blackColor" : "lightGrayColor") << outlet;
      EXPECT_TRUE(enabled(outlet)) << outlet;
    }
    EXPECT_TRUE(enabled("tandemTrimValid"));
  }
};

TEST_F(PanelView, HasItsTextsInTheUsersLanguage) {
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("tandemTrimValid"), "Trim It");
  EXPECT_EQ(text("labelDirection"), "Which Way:");
  EXPECT_EQ(text("labelPosition"), "Where:");
  for (const auto& side : kSides) EXPECT_EQ(text(side.label), side.title + ":");
  EXPECT_EQ(text("defaultButton"), "As It Was");
}

TEST_F(PanelView, ShowsTheKeyWhereTheTableLacksIt) {
  scene.strings.erase("TopMargin");
  scene.strings.erase("RestoreDefault");
  scene.strings.erase("IntegerValueRangeFormat");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginTop"), "TopMargin:");
  EXPECT_EQ(text("defaultButton"), "RestoreDefault");
  EXPECT_EQ(text("labelMarginLimitTop"), "mm   IntegerValueRangeFormat");
}

TEST_F(PanelView, NeverTakesATextForAFormat) {
  scene.strings["TopMargin"] = "%s%n%@ 100 %";
  scene.strings["IntegerValueRangeFormat"] = "%d %@ [min]%";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginTop"), "%s%n%@ 100 %:");
  EXPECT_EQ(text("labelMarginLimitTop"), "mm   %d %@ 0%");
}

TEST_F(PanelView, ShowsTextsWithControlAndDirectionCharactersUnchanged) {
  const std::string odd = "\u202Eodd\u2069\x1B[2J\u200F";
  scene.strings["TopMargin"] = odd;
  scene.strings["Left"] = odd;
  scene.stored = {{"MVTandemTrim", "On"}, {"MVPrintPosition", "Left"}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginTop"), odd + ":");
  EXPECT_EQ(text("positionPopUp"), odd);
  EXPECT_EQ(panel->summaryInfo().rows.at("Where"), odd);
  panel->save();
  EXPECT_EQ(dialog->stored("MVPrintPosition"), "Left");
}

TEST_F(PanelView, ShowsUnitAndRangeBesideEachBox) {
  ASSERT_NO_FATAL_FAILURE(show());
  for (const auto& side : kSides) {
    EXPECT_EQ(text(side.limitLabel), "mm   from 0 up to " + std::to_string(side.limit));
    EXPECT_EQ(panel->look(side.stepper).min, 0);
    EXPECT_EQ(panel->look(side.stepper).max, side.limit);
  }
}

TEST_F(PanelView, ReplacesTheMinimumsTokenBeforeTheMaximums) {
  scene.settingInfo["Wording.MaxLabelForValueRange"] = "<string>0</string>";
  scene.strings["IntegerValueRangeFormat"] = "[min]-[min]";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginLimitTop"), "mm   50-50");
}

TEST_F(PanelView, ReplacesEveryTokenOfTheRangeAndNothingForAnEmptyToken) {
  scene.settingInfo["Wording.MinLabelForValueRange"] = "<string></string>";
  scene.strings["IntegerValueRangeFormat"] = "[max], [min], [max]";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("labelMarginLimitBottom"), "mm   40, [min], 40");
}

TEST_F(PanelView, OffersThreePositionsAndTwoDirections) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(panel->choices("positionPopUp"),
            (std::vector<Choice>{{"Port", "Left"}, {"Midships", "Center"}, {"Starboard", "Right"}}));
  EXPECT_EQ(panel->choices("directionPopUp"), (std::vector<Choice>{{"Long Edge First", "LongEdgeFeed"},
                                                                   {"Short Edge First", "ShortEdgeFeed"}}));
}

TEST_F(PanelView, IsGreyWhileTheFunctionIsOff) {
  ASSERT_NO_FATAL_FAILURE(show());
  expectLive(false);
}

TEST_F(PanelView, IsLiveWhileTheFunctionIsOn) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  expectLive(true);
}

TEST_F(PanelView, FollowsTheCheckBoxAtOnce) {
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_TRUE(panel->click("tandemTrimValid"));
  expectLive(true);
  EXPECT_TRUE(panel->click("tandemTrimValid"));
  expectLive(false);
}

TEST_F(PanelView, SwitchesOnFromMixedOnAClick) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->setMixed("tandemTrimValid");
  panel->click("tandemTrimValid");
  EXPECT_EQ(panel->look("tandemTrimValid").state, 1);
  expectLive(true);
}

TEST_F(PanelView, IsGreyInTheMixedState) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->setMixed("tandemTrimValid");
  panel->updateView();
  expectLive(false);
  EXPECT_EQ(panel->look("tandemTrimValid").state, -1);
}

TEST_F(PanelView, IgnoresTheUserWhereItIsGrey) {
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_FALSE(panel->replaceText("textBoxMarginTop", "9"));
  EXPECT_FALSE(panel->step("stepperMarginTop", 1));
  EXPECT_FALSE(panel->choose("positionPopUp", "Right"));
  EXPECT_EQ(text("textBoxMarginTop"), "5");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Center");
}

TEST_F(PanelView, KeepsItsDependentControlsLiveAfterRestoringDefaults) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->click("defaultButton");
  expectLive(true);
}

TEST_F(PanelView, StaysLiveInTheMixedStateWhenTheDefaultsAreRestored) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->setMixed("tandemTrimValid");
  EXPECT_TRUE(panel->click("defaultButton"));
  expectLive(true);
  EXPECT_EQ(panel->look("tandemTrimValid").state, -1);
}

TEST_F(PanelView, FollowsTheStoredStateOnEachShowAndRestore) {
  ASSERT_NO_FATAL_FAILURE(show());
  for (const bool on : {true, false, true, false}) {
    dialog->store("MVTandemTrim", on ? "On" : "Off");
    EXPECT_TRUE(panel->restore());
    EXPECT_EQ(panel->look("tandemTrimValid").state, on ? 1 : 0);
    expectLive(on);
    dialog->store("MVTandemTrim", on ? "Off" : "On");
    panel->willShow();
    EXPECT_EQ(panel->look("tandemTrimValid").state, on ? 0 : 1);
    expectLive(!on);
  }
}

TEST_F(PanelView, MayBeGreyedWhileOneOfItsBoxesHasTheFocus) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  dialog->store("MVTandemTrim", "Off");
  for (const auto& side : kSides) {
    panel->replaceText(side.textBox, "9");
    panel->restore();
    expectLive(false);
    panel->click("tandemTrimValid");
    expectLive(true);
  }
}

TEST_F(PanelView, IsNotSetUpWhenTheMinimumIsAString) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<string>0</string>";
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_ANY_THROW(panel->panelView());
  const auto before = storedSettings();
  EXPECT_TRUE(panel->panelView());
  EXPECT_TRUE(panel->restore());
  EXPECT_TRUE(panel->save());
  EXPECT_EQ(storedSettings(), before);
}

TEST_F(PanelView, IsNotSetUpWithoutAMinimumOrAWordingToken) {
  for (const std::string missing :
       {"DefaultValue.MarginMin", "Wording.MinLabelForValueRange", "Wording.MaxLabelForValueRange"}) {
    const auto value = scene.settingInfo.extract(missing);
    ASSERT_NO_FATAL_FAILURE(open());
    EXPECT_ANY_THROW(panel->panelView()) << missing;
    scene.settingInfo[missing] = value.mapped();
    panel.reset();
  }
}

class MarginStepper : public ForEachSide {};

TEST_P(MarginStepper, MovesTheBoxByOneWithinItsRangeWithoutWrapping) {
  scene.stored[side.key] = std::to_string(side.limit - 1);
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->step(side.stepper, 1);
  EXPECT_EQ(text(side.textBox), std::to_string(side.limit));
  panel->step(side.stepper, 1);
  EXPECT_EQ(text(side.textBox), std::to_string(side.limit));
  panel->step(side.stepper, -1);
  EXPECT_EQ(text(side.textBox), std::to_string(side.limit - 1));
}

TEST_P(MarginStepper, StopsAtTheMinimum) {
  scene.stored[side.key] = "1";
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->step(side.stepper, -1);
  panel->step(side.stepper, -1);
  EXPECT_EQ(text(side.textBox), "0");
  EXPECT_EQ(text(side.stepper), "0");
}

TEST_P(MarginStepper, IsSavedFromTheBox) {
  scene.stored[side.key] = "3";
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->step(side.stepper, 2);
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), "5");
}

INSTANTIATE_TEST_SUITE_P(Sides, MarginStepper, testing::ValuesIn(kSides), sideName);

}  // namespace
}  // namespace tandemtrim::conformance
