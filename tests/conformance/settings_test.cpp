#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

using testing::ElementsAre;

using Settings = std::vector<std::optional<std::string>>;

class StoredSettings : public Conformance {};

TEST_F(StoredSettings, OfAFreshJobAreTheDefaultsAsSoonAsThePanelIsMade) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(storedSettings(), (Settings{"Off", "LongEdgeFeed", "Center", "5", "6", "7", "8"}));
  EXPECT_EQ(dialog->storedKeys().size(), kKeys.size());
}

TEST_F(StoredSettings, ThatExistAlreadyStayUnchangedLegalOrNot) {
  scene.stored = {{"MVTandemTrim", "perhaps"},
                  {"MVPrintPosition", "Nowhere"},
                  {"MVTopMargin", "999"},
                  {"MVLeftMargin", ""},
                  {"Other", "untouched"}};
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(storedSettings(), (Settings{"perhaps", "LongEdgeFeed", "Nowhere", "999", "6", "", "8"}));
  EXPECT_EQ(dialog->stored("Other"), "untouched");
}

TEST_F(StoredSettings, AreShownWithThePanelAndStoredAgainByASave) {
  scene.stored = {{"MVTandemTrim", "On"},       {"MVImageDirectionPriority", "ShortEdgeFeed"},
                  {"MVPrintPosition", "Right"}, {"MVTopMargin", "11"},
                  {"MVBottomMargin", "12"},     {"MVLeftMargin", "13"},
                  {"MVRightMargin", "9"}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(panel->look("tandemTrimValid").state, 1);
  EXPECT_EQ(panel->look("directionPopUp").chosen, "ShortEdgeFeed");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Right");
  EXPECT_EQ(text("textBoxMarginTop"), "11");
  EXPECT_EQ(text("textBoxMarginBottom"), "12");
  EXPECT_EQ(text("textBoxMarginLeft"), "13");
  EXPECT_EQ(text("textBoxMarginRight"), "9");
  EXPECT_EQ(text("stepperMarginRight"), "9");
  const auto before = storedSettings();
  EXPECT_TRUE(panel->save());
  EXPECT_EQ(storedSettings(), before);
}

TEST_F(StoredSettings, ChangeOnlyWhenThePanelIsSaved) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const auto before = storedSettings();
  panel->replaceText("textBoxMarginTop", "17");
  panel->choose("directionPopUp", "ShortEdgeFeed");
  panel->choose("positionPopUp", "Left");
  panel->click("tandemTrimValid");
  EXPECT_EQ(storedSettings(), before);
  EXPECT_TRUE(panel->save());
  EXPECT_EQ(storedSettings(), (Settings{"Off", "ShortEdgeFeed", "Left", "17", "6", "7", "8"}));
}

TEST_F(StoredSettings, ThatAreGoneAreShownAsTheirDefaultsAndNotWrittenByTheRestore) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (const auto& side : kSides) panel->replaceText(side.textBox, "9");
  panel->choose("positionPopUp", "Right");
  panel->choose("directionPopUp", "ShortEdgeFeed");
  for (const auto& key : kKeys) dialog->store(key, std::nullopt);
  EXPECT_TRUE(panel->restore());
  for (const auto& side : kSides) {
    EXPECT_EQ(text(side.textBox), side.defaultText);
    EXPECT_EQ(text(side.stepper), side.defaultText);
  }
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Center");
  EXPECT_EQ(panel->look("directionPopUp").chosen, "LongEdgeFeed");
  EXPECT_EQ(panel->look("tandemTrimValid").state, 0);
  EXPECT_EQ(storedSettings(), Settings(kKeys.size()));
}

TEST_F(StoredSettings, ThatAreNotExactlyOnAreShownAsOffAndSavedAsOff) {
  for (const std::string value : {"on", "ON", "1", "", "On ", "Off"}) {
    scene.stored["MVTandemTrim"] = value;
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(panel->look("tandemTrimValid").state, 0) << '"' << value << '"';
    panel->save();
    EXPECT_EQ(dialog->stored("MVTandemTrim"), "Off") << '"' << value << '"';
    panel.reset();
  }
}

TEST_F(StoredSettings, OfAMenuThatNoItemHasLeaveNothingChosenAndAreRemovedByTheNextSave) {
  scene.stored = {{"MVTandemTrim", "On"}, {"MVPrintPosition", "Nowhere"}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(panel->look("positionPopUp").chosen, std::nullopt);
  EXPECT_EQ(dialog->stored("MVPrintPosition"), "Nowhere");
  panel->save();
  EXPECT_EQ(dialog->stored("MVPrintPosition"), std::nullopt);
}

TEST_F(StoredSettings, AreNamesAndNeverLocalizedTitles) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->choose("positionPopUp", "Right");
  panel->choose("directionPopUp", "ShortEdgeFeed");
  panel->save();
  EXPECT_EQ(dialog->stored("MVPrintPosition"), "Right");
  EXPECT_EQ(dialog->stored("MVImageDirectionPriority"), "ShortEdgeFeed");
}

TEST_F(StoredSettings, OfAMixedCheckBoxAreOff) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->setMixed("tandemTrimValid");
  panel->save();
  EXPECT_EQ(dialog->stored("MVTandemTrim"), "Off");
}

class MarginSetting : public ForEachSide {};

TEST_P(MarginSetting, OutsideItsRangeIsShownAndSavedUnchangedUntilItIsEdited) {
  scene.stored = {{"MVTandemTrim", "On"}, {side.key, "777"}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.textBox), "777");
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), "777");
  panel->type(side.textBox, "1");
  EXPECT_EQ(text(side.textBox), std::to_string(side.limit));
}

TEST_P(MarginSetting, OfAnyWordsIsShownSavedAndSummarisedUnchangedUntilItIsEdited) {
  for (const std::string words :
       {"gtk-ignore-value", "$(reboot)", "`id`;|&<>*?'\"\\", "%n%s", "two words", "12 mm", "auto"}) {
    scene.stored = {{"MVTandemTrim", "On"}, {side.key, words}};
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(text(side.textBox), words);
    EXPECT_EQ(panel->summaryInfo().rows.at(side.title), words);
    panel->save();
    EXPECT_EQ(dialog->stored(side.key), words);
    panel->replaceText(side.textBox, words);
    EXPECT_EQ(text(side.textBox), words == "12 mm" ? std::to_string(std::min(12, side.limit)) : "0") << words;
    panel.reset();
  }
}

TEST_P(MarginSetting, WhoseDefaultIsAboveThePrintersMaximumIsStoredShownAndSavedUnchanged) {
  scene.settingInfo["DefaultValue.Margin" + side.name] = "<integer>55</integer>";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(dialog->stored(side.key), "55");
  EXPECT_EQ(text(side.textBox), "55");
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), "55");
}

TEST_P(MarginSetting, ThatIsStoredEmptyIsShownEmptyAndNotReplacedByItsDefault) {
  scene.stored[side.key] = "";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text(side.textBox), "");
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), "");
}

TEST_P(MarginSetting, ThatThePanelWouldSpellDifferentlyIsShownAndSavedUnchanged) {
  for (const std::string value : {"007", " 5 ", "\t5", "5\n", "+5", "-5", "1e1", "0x10", "5.0", "1,5",
                                  "\uFF15", "\u0665", "\u00A05", "e\u0301", "\u00E9", "5\uFEFF", "\u202E5"}) {
    scene.stored = {{"MVTandemTrim", "On"}, {side.key, value}};
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(text(side.textBox), value);
    panel->restore();
    panel->save();
    EXPECT_EQ(dialog->stored(side.key), value);
    panel.reset();
  }
}

TEST_P(MarginSetting, IsSavedFromTheBoxBeforeItIsShown) {
  ASSERT_NO_FATAL_FAILURE(open());
  ASSERT_TRUE(panel->panelView());
  panel->save();
  EXPECT_EQ(dialog->stored(side.key), text(side.textBox));
}

TEST_P(MarginSetting, KeepsAFractionOfItsDefault) {
  scene.settingInfo["DefaultValue.Margin" + side.name] = "<real>2.5</real>";
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(dialog->stored(side.key), "2.5");
  EXPECT_EQ(text(side.textBox), "2.5");
}

INSTANTIATE_TEST_SUITE_P(Sides, MarginSetting, testing::ValuesIn(kSides), sideName);

class RestoreDefaults : public Conformance {};

TEST_F(RestoreDefaults, ResetsSixSettingsInTheControlsOnly) {
  scene.stored = {{"MVTandemTrim", "On"},       {"MVImageDirectionPriority", "ShortEdgeFeed"},
                  {"MVPrintPosition", "Right"}, {"MVTopMargin", "11"},
                  {"MVBottomMargin", "12"},     {"MVLeftMargin", "13"},
                  {"MVRightMargin", "9"}};
  ASSERT_NO_FATAL_FAILURE(show());
  const auto before = storedSettings();
  EXPECT_TRUE(panel->click("defaultButton"));
  EXPECT_EQ(panel->look("tandemTrimValid").state, 1);
  EXPECT_EQ(panel->look("directionPopUp").chosen, "LongEdgeFeed");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Center");
  for (const auto& side : kSides) {
    EXPECT_EQ(text(side.textBox), side.defaultText);
    EXPECT_EQ(text(side.stepper), side.defaultText);
    EXPECT_TRUE(enabled(side.textBox));
  }
  EXPECT_EQ(storedSettings(), before);
  panel->save();
  EXPECT_EQ(storedSettings(), (Settings{"On", "LongEdgeFeed", "Center", "5", "6", "7", "8"}));
}

TEST_F(RestoreDefaults, IsGreyedWhileTheFunctionIsOff) {
  scene.stored = {{"MVTandemTrim", "Off"}, {"MVTopMargin", "11"}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_FALSE(panel->click("defaultButton"));
  EXPECT_EQ(text("textBoxMarginTop"), "11");
}

}  // namespace
}  // namespace tandemtrim::conformance
