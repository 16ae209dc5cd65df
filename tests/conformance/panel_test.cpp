#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

using testing::ElementsAreArray;

class PanelRequest : public Conformance {};

TEST_F(PanelRequest, ReturnsOnePanelForThePrintDialogsType) {
  dialog = openDialog(scene);
  EXPECT_EQ(dialog->panelCount(), 1U);
}

TEST_F(PanelRequest, ReturnsNullForAnyOtherType) {
  dialog = openDialog(scene);
  for (const std::string type :
       {"bdb091f4-e57f-11d3-b5cc-0050e4603277", "", "TandemTrim", "BDB091F4-E57F-11D3-B5CC-0050E4603277 "}) {
    EXPECT_EQ(dialog->panelForType(type, true), nullptr) << '"' << type << '"';
  }
  EXPECT_EQ(dialog->panelForType(std::nullopt, true), nullptr);
  EXPECT_THAT(dialog->storedKeys(), testing::IsEmpty());
}

TEST_F(PanelRequest, ReturnsNullWithoutAHostCallback) {
  dialog = openDialog(scene);
  EXPECT_EQ(dialog->panelForType(kType, false), nullptr);
}

TEST_F(PanelRequest, ReturnsNullWhenTheBundleLacksItsSettingInfo) {
  scene.settingInfo.clear();
  dialog = openDialog(scene);
  EXPECT_EQ(dialog->panelForType(kType, true), nullptr);
  EXPECT_THAT(dialog->storedKeys(), testing::IsEmpty());
}

TEST_F(PanelRequest, ReturnsADistinctPanelEachTime) {
  ASSERT_NO_FATAL_FAILURE(show());
  const auto other = dialog->panelForType(kType, true);
  ASSERT_NE(other, nullptr);
  ASSERT_TRUE(other->panelView());
  other->willShow();
  EXPECT_NE(panel->viewIdentity(), other->viewIdentity());
  EXPECT_NE(panel->keywordsIdentity(), other->keywordsIdentity());
  panel->click("tandemTrimValid");
  panel->replaceText("textBoxMarginTop", "9");
  panel->choose("positionPopUp", "Right");
  EXPECT_EQ(other->look("tandemTrimValid").state, 0);
  EXPECT_EQ(other->look("textBoxMarginTop").text, "5");
  EXPECT_EQ(other->look("positionPopUp").chosen, "Center");
}

TEST_F(PanelRequest, ReturnsAPanelThatWorksWhenAnotherIsGone) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  auto other = dialog->panelForType(kType, true);
  ASSERT_NE(other, nullptr);
  ASSERT_TRUE(other->panelView());
  other->willShow();
  other.reset();
  panel->replaceText("textBoxMarginTop", "1a2");
  EXPECT_EQ(text("textBoxMarginTop"), "12");
  EXPECT_TRUE(panel->save());
  EXPECT_EQ(dialog->stored("MVTopMargin"), "12");
}

class PanelOfADialog : public Conformance {};

TEST_F(PanelOfADialog, IsNamedInTheUsersLanguage) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->panelName(), "Panel Name");
}

TEST_F(PanelOfADialog, IsNamedTandemTrimWhenTheTableLacksItsName) {
  scene.strings.erase("TandemTrim");
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->panelName(), "TandemTrim");
}

TEST_F(PanelOfADialog, HasTheKindOfTheSettingInfo) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->panelKind(), kPanelKind);
}

TEST_F(PanelOfADialog, HasNoKindWhenTheSettingInfoNestsItsKeysTheOtherWayRound) {
  scene.settingInfo.erase("ID.PanelKind");
  scene.settingInfo["PanelKind.ID"] = "<string>conformance.panel</string>";
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->panelKind(), std::nullopt);
}

TEST_F(PanelOfADialog, SupportsTheSevenKeywordsInOrder) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_THAT(panel->supportedPPDOptionKeys(), ElementsAreArray(kKeys));
  EXPECT_THAT(panel->supportedPPDOptionKeys(), ElementsAreArray(kKeys));
}

TEST_F(PanelOfADialog, ReturnsTheSameListOfKeywordsOnEachCall) {
  ASSERT_NO_FATAL_FAILURE(open());
  const auto* list = panel->keywordsIdentity();
  EXPECT_EQ(panel->keywordsIdentity(), list);
}

TEST_F(PanelOfADialog, AllowsHidingHelpAndPrintingInEveryState) {
  ASSERT_NO_FATAL_FAILURE(open());
  const auto agrees = [&] { return panel->shouldHide() && panel->shouldShowHelp() && panel->shouldPrint(); };
  EXPECT_TRUE(agrees());
  ASSERT_TRUE(panel->panelView());
  EXPECT_TRUE(agrees());
  panel->willShow();
  panel->click("tandemTrimValid");
  EXPECT_TRUE(agrees());
}

TEST_F(PanelOfADialog, SavesAndRestoresNothingBeforeItsViewWasRequested) {
  scene.stored["MVTopMargin"] = "foreign";
  ASSERT_NO_FATAL_FAILURE(open());
  const auto before = storedSettings();
  EXPECT_TRUE(panel->restore());
  EXPECT_TRUE(panel->save());
  panel->willShow();
  EXPECT_EQ(storedSettings(), before);
}

TEST_F(PanelOfADialog, SavesRestoresAndGreysNothingWhileItsViewIsNotSetUp) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->replaceText("textBoxMarginTop", "33");
  panel->choose("positionPopUp", "Right");
  const auto before = storedSettings();
  panel->setViewIsInited(false);
  EXPECT_TRUE(panel->save());
  EXPECT_EQ(storedSettings(), before);
  dialog->store("MVTandemTrim", "Off");
  EXPECT_TRUE(panel->restore());
  panel->willShow();
  EXPECT_EQ(text("textBoxMarginTop"), "33");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Right");
  EXPECT_EQ(panel->look("tandemTrimValid").state, 1);
  panel->setMixed("tandemTrimValid");
  panel->updateView();
  EXPECT_TRUE(enabled("textBoxMarginTop"));
  panel->setViewIsInited(true);
  panel->updateView();
  EXPECT_FALSE(enabled("textBoxMarginTop"));
}

TEST_F(PanelOfADialog, ReturnsTheSameViewEachTimeAndSetsItUpOnce) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const auto* view = panel->viewIdentity();
  panel->replaceText("textBoxMarginTop", "33");
  panel->choose("positionPopUp", "Right");
  ASSERT_TRUE(panel->panelView());
  EXPECT_EQ(panel->viewIdentity(), view);
  EXPECT_EQ(text("textBoxMarginTop"), "33");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Right");
}

}  // namespace
}  // namespace tandemtrim::conformance
