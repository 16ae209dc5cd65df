#include "plugin/panel.hpp"

#include <stdexcept>

#include "tests/support/recording/platform.hpp"

namespace tandemtrim::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

constexpr const char* kLogLine =
    "supportedPPDOptionKeys:=NSArray(%@) MVTandemTrim MVImageDirectionPriority MVPrintPosition MVTopMargin "
    "MVBottomMargin MVLeftMargin MVRightMargin";

class Panel : public RecordingPlatformTest {
 protected:
  void makePanel() {
    openJob();
    panel = MorvaTTPdePanelKV2::initWithCallback(callback, bundle);
    ASSERT_THAT(panel, NotNull());
  }
  void showPanel() {
    ASSERT_NO_FATAL_FAILURE(makePanel());
    ASSERT_EQ(panel->panelView(), &nib.tandemTrimView);
    log.clear();
    settings().log.clear();
  }
  // Expects the calls of a panel that is shown: everything is restored, then greyed.
  void expectRestoredAndGreyed() {
    ASSERT_EQ(log.size(), 32U);
    EXPECT_EQ(log.front(), "tandemTrimValid state=0");
    EXPECT_EQ(log.at(10), "stepperMarginRight text=8");
    EXPECT_EQ(log.at(11), "directionPopUp enabled=false");
    EXPECT_EQ(log.back(), "labelMarginLimitRight color=gray");
  }

  std::unique_ptr<MorvaTTPdePanelKV2> panel;
};

TEST_F(Panel, IsNotMadeWithoutACallbackOrABundle) {
  openJob();
  EXPECT_THAT(MorvaTTPdePanelKV2::initWithCallback(nullptr, bundle), IsNull());
  EXPECT_THAT(MorvaTTPdePanelKV2::initWithCallback(callback, nullptr), IsNull());
  EXPECT_THAT(bundle->log, IsEmpty());
}

TEST_F(Panel, IsNotMadeWithoutItsSettingInfo) {
  openJob();
  bundle->settingInfoPath.reset();
  EXPECT_THAT(MorvaTTPdePanelKV2::initWithCallback(callback, bundle), IsNull());
  EXPECT_EQ(bundle.use_count(), 1);
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Panel, PassesOnTheExceptionsOfItsConstruction) {
  scene.settingInfo["DefaultValue.MarginTop"] = "<string>5</string>";
  openJob();
  EXPECT_THROW((void)MorvaTTPdePanelKV2::initWithCallback(callback, bundle), std::invalid_argument);
  EXPECT_EQ(bundle.use_count(), 1);
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Panel, BuildsEverythingButTheViewWhenItIsMade) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  EXPECT_EQ(panel->commonInfo()->callback(), callback);
  EXPECT_EQ(panel->commonInfo()->bundle(), bundle);
  EXPECT_EQ(panel->viewController()->commonInfo(), panel->commonInfo().get());
  EXPECT_THAT(panel->viewController()->ticket(), NotNull());
  EXPECT_EQ(settings().values.size(), 7U);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Panel, IsNamedByTheLocalizedTextOfItsKey) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  EXPECT_EQ(panel->panelName(), "Panel Name");
  EXPECT_THAT(bundle->log.back(), R"(text of "TandemTrim" or "")");
  bundle->strings.clear();
  EXPECT_EQ(panel->panelName(), "TandemTrim");
}

TEST_F(Panel, ReturnsItsKindAsTheObjectOfThePropertyList) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  EXPECT_THAT(panel->panelKind(), NotNull());
  EXPECT_EQ(panel->panelKind(), panel->commonInfo()->panelKindID());
}

TEST_F(Panel, LoadsItsNibByNameOnTheFirstRequestForItsView) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  EXPECT_EQ(panel->panelView(), &nib.tandemTrimView);
  EXPECT_EQ(log.front(), "load TandemTrim");
}

TEST_F(Panel, RestoresAndThenGreysWhenItIsAboutToShow) {
  ASSERT_NO_FATAL_FAILURE(showPanel());
  panel->willShow();
  expectRestoredAndGreyed();
}

TEST_F(Panel, RestoresAndThenGreysWhenTheHostAsksItToRestore) {
  ASSERT_NO_FATAL_FAILURE(showPanel());
  std::string error = "untouched";
  EXPECT_TRUE(panel->restoreValuesAndReturnError(&error));
  expectRestoredAndGreyed();
  EXPECT_EQ(error, "untouched");
  EXPECT_TRUE(panel->restoreValuesAndReturnError(nullptr));
}

TEST_F(Panel, SavesAllSettingsAndReportsSuccessEvenWhereAWriteFails) {
  ASSERT_NO_FATAL_FAILURE(showPanel());
  panel->willShow();
  settings().log.clear();
  settings().writeStatus = -1;
  std::string error = "untouched";
  EXPECT_TRUE(panel->saveValuesAndReturnError(&error));
  EXPECT_EQ(settings().log.size(), 7U);
  EXPECT_EQ(error, "untouched");
  EXPECT_TRUE(panel->saveValuesAndReturnError(nullptr));
}

TEST_F(Panel, DoesNothingButReportSuccessBeforeItsViewWasRequested) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  settings().log.clear();
  panel->willShow();
  EXPECT_TRUE(panel->restoreValuesAndReturnError(nullptr));
  EXPECT_TRUE(panel->saveValuesAndReturnError(nullptr));
  EXPECT_THAT(settings().log, IsEmpty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Panel, PutsTheOrderOfItsSummaryWhereThePrintDialogLooksForIt) {
  scene.stored["MVTandemTrim"] = "On";
  ASSERT_NO_FATAL_FAILURE(makePanel());
  const auto summary = panel->summaryInfo();
  ASSERT_TRUE(summary.contains("Summary Display Order"));
  EXPECT_EQ(summary.at("Summary Display Order")->as<platform::Array>()->size(), 6U);
  EXPECT_EQ(summary.size(), 7U);
}

TEST_F(Panel, ReturnsTheSameListOfKeywordsOnEachCallAndLogsItEachTime) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  const auto& first = panel->supportedPPDOptionKeys();
  EXPECT_THAT(log, ElementsAre(kLogLine));
  const auto& second = panel->supportedPPDOptionKeys();
  EXPECT_THAT(log, ElementsAre(kLogLine, kLogLine));
  EXPECT_EQ(&first, &second);
  EXPECT_THAT(first, ElementsAre("MVTandemTrim", "MVImageDirectionPriority", "MVPrintPosition", "MVTopMargin",
                                 "MVBottomMargin", "MVLeftMargin", "MVRightMargin"));
}

TEST_F(Panel, ListsItsSettingsInTheOrderOfItsKeywords) {
  scene.stored["MVTopMargin"] = "75";
  ASSERT_NO_FATAL_FAILURE(makePanel());
  const auto settings = panel->settings();
  std::vector<std::string> keywords, names, values;
  for (const auto& setting : settings) {
    keywords.push_back(setting.keyword);
    names.push_back(setting.name);
    values.push_back(setting.value);
  }
  EXPECT_EQ(keywords, panel->supportedPPDOptionKeys());
  EXPECT_THAT(names, ElementsAre("Valid", "Direction", "Position", "Top", "Bottom", "Left", "Right"));
  EXPECT_EQ(values.at(3), "75");
  EXPECT_EQ(values.at(4), this->settings().values.at("MVBottomMargin"));
}

TEST_F(Panel, ListsTheAllowedValuesOfEachSetting) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>2</integer>";
  ASSERT_NO_FATAL_FAILURE(makePanel());
  bundle->strings["ShortEdgeFeed"] = "Kurze Seite";
  bundle->strings["TopMargin"] = "Oben";
  const auto settings = panel->settings();
  using Kind = platform::PanelSetting::Kind;
  const auto valuesOf = [](const platform::PanelSetting& setting) {
    std::vector<std::string> values;
    for (const auto& choice : setting.choices) values.push_back(choice.value);
    return values;
  };
  EXPECT_EQ(settings.at(0).kind, Kind::onOff);
  EXPECT_THAT(valuesOf(settings.at(0)), ElementsAre("On", "Off"));
  EXPECT_EQ(settings.at(1).kind, Kind::choice);
  EXPECT_THAT(valuesOf(settings.at(1)), ElementsAre("LongEdgeFeed", "ShortEdgeFeed"));
  EXPECT_EQ(settings.at(1).choices.at(1).title, "Kurze Seite");
  EXPECT_THAT(valuesOf(settings.at(2)), ElementsAre("Left", "Center", "Right"));
  for (std::size_t side = 3; side < 7; ++side) {
    EXPECT_EQ(settings.at(side).kind, Kind::number);
    EXPECT_EQ(settings.at(side).unit, "mm");
    EXPECT_EQ(settings.at(side).minimum, 2);
    EXPECT_EQ(settings.at(side).maximum,
              panel->commonInfo()->marginLimit(settings.at(side).name)->integerValue());
  }
  EXPECT_EQ(settings.at(3).title, "Oben");
}

TEST_F(Panel, SaysWhichEdgeEachMarginTrims) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  using enum platform::PanelSetting::Edge;
  const std::map<std::string, platform::PanelSetting::Edge> expected{
      {"Valid", none},    {"Direction", none}, {"Position", none}, {"Top", top},
      {"Bottom", bottom}, {"Left", left},      {"Right", right}};
  for (const auto& setting : panel->settings())
    EXPECT_EQ(setting.trimmedEdge, expected.at(setting.name)) << setting.name;
}

TEST_F(Panel, ListsItsSettingsWithoutTouchingControlsOrPrintSettings) {
  ASSERT_NO_FATAL_FAILURE(showPanel());
  settings().values.erase("MVLeftMargin");
  const auto listed = panel->settings();
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(settings().values.contains("MVLeftMargin"));
  EXPECT_EQ(listed.at(5).value, panel->viewController()->ticket()->ticketMarginLeft()->defaultValue());
}

TEST_F(Panel, AnswersYesToEveryQuestionOfItsHost) {
  ASSERT_NO_FATAL_FAILURE(makePanel());
  EXPECT_TRUE(panel->shouldHide() && panel->shouldShowHelp() && panel->shouldPrint());
  ASSERT_THAT(panel->panelView(), NotNull());
  EXPECT_TRUE(panel->shouldHide() && panel->shouldShowHelp() && panel->shouldPrint());
}

}  // namespace
}  // namespace tandemtrim::test
