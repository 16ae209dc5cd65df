#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

class PanelSummary : public Conformance {
 protected:
  const Summary kOff{{{"Trim It", "No"}}, std::nullopt};
};

TEST_F(PanelSummary, IsOneRowWithoutAnOrderWhileTheFunctionIsOff) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->summaryInfo(), kOff);
}

TEST_F(PanelSummary, IsSixRowsInOrderWhileTheFunctionIsOn) {
  scene.stored = {
      {"MVTandemTrim", "On"}, {"MVImageDirectionPriority", "ShortEdgeFeed"}, {"MVTopMargin", "12"}};
  ASSERT_NO_FATAL_FAILURE(open());
  const std::vector<std::string> order{"Which Way", "Where", "Above", "Below", "Before", "Behind"};
  EXPECT_EQ(panel->summaryInfo(), (Summary{{{"Which Way", "Short Edge First"},
                                            {"Where", "Midships"},
                                            {"Above", "12"},
                                            {"Below", "6"},
                                            {"Before", "7"},
                                            {"Behind", "8"}},
                                           order}));
}

TEST_F(PanelSummary, IsTheSameWhenItIsRequestedTwice) {
  scene.stored["MVTandemTrim"] = "On";
  ASSERT_NO_FATAL_FAILURE(show());
  const auto first = panel->summaryInfo();
  EXPECT_EQ(panel->summaryInfo(), first);
}

TEST_F(PanelSummary, MayBeChangedByItsOwner) {
  scene.stored["MVTandemTrim"] = "On";
  ASSERT_NO_FATAL_FAILURE(open());
  const auto before = panel->summaryInfo();
  panel->emptySummary();
  EXPECT_EQ(panel->summaryInfo(), before);
}

TEST_F(PanelSummary, HasTheWordsOfTheChosenItems) {
  for (const std::string direction : {"LongEdgeFeed", "ShortEdgeFeed"}) {
    for (const std::string position : {"Left", "Center", "Right"}) {
      scene.stored = {
          {"MVTandemTrim", "On"}, {"MVImageDirectionPriority", direction}, {"MVPrintPosition", position}};
      ASSERT_NO_FATAL_FAILURE(show());
      const auto rows = panel->summaryInfo().rows;
      EXPECT_EQ(panel->look("directionPopUp").chosen, direction);
      EXPECT_EQ(rows.at("Which Way"), text("directionPopUp"));
      EXPECT_EQ(panel->look("positionPopUp").chosen, position);
      EXPECT_EQ(rows.at("Where"), text("positionPopUp"));
      panel.reset();
    }
  }
}

TEST_F(PanelSummary, ShowsStoredValuesThatTheTableLacksUnchanged) {
  scene.stored = {{"MVTandemTrim", "On"}, {"MVPrintPosition", "Nowhere"}, {"MVTopMargin", "lots"}};
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->summaryInfo().rows.at("Where"), "Nowhere");
  EXPECT_EQ(panel->summaryInfo().rows.at("Above"), "lots");
}

TEST_F(PanelSummary, CountsAnythingButExactlyOnAsOff) {
  scene.stored["MVTandemTrim"] = "on";
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(panel->summaryInfo(), (Summary{{{"Trim It", "on"}}, std::nullopt}));
}

TEST_F(PanelSummary, ReplacesUnsavedInputByTheStoredValues) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  panel->replaceText("textBoxMarginTop", "33");
  panel->choose("positionPopUp", "Right");
  EXPECT_EQ(panel->summaryInfo().rows.at("Above"), "5");
  EXPECT_EQ(text("textBoxMarginTop"), "5");
  EXPECT_EQ(text("stepperMarginTop"), "5");
  EXPECT_EQ(panel->look("positionPopUp").chosen, "Center");
}

TEST_F(PanelSummary, RestoresTheCheckBoxWithoutGreyingTheControls) {
  ASSERT_NO_FATAL_FAILURE(show());
  panel->click("tandemTrimValid");
  panel->replaceText("textBoxMarginTop", "33");
  EXPECT_EQ(panel->summaryInfo(), kOff);
  EXPECT_EQ(panel->look("tandemTrimValid").state, 0);
  EXPECT_TRUE(enabled("textBoxMarginTop"));
  EXPECT_EQ(text("textBoxMarginTop"), "33");
}

TEST_F(PanelSummary, ShowsWhatWasSaved) {
  ASSERT_NO_FATAL_FAILURE(show());
  panel->click("tandemTrimValid");
  panel->replaceText("textBoxMarginRight", "1");
  panel->save();
  EXPECT_EQ(panel->summaryInfo().rows.at("Behind"), "1");
}

TEST_F(PanelSummary, DoesNotChangeTheStoredSettings) {
  scene.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "999"}};
  ASSERT_NO_FATAL_FAILURE(show());
  const auto before = storedSettings();
  (void)panel->summaryInfo();
  EXPECT_EQ(storedSettings(), before);
}

}  // namespace
}  // namespace tandemtrim::conformance
