#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kOrder = "Order";

class SummaryInfo : public ViewTest {
 protected:
  // Titles to value texts; the order's titles joined by commas.
  std::map<std::string, std::string> summary(const char* orderKey = kOrder) {
    std::map<std::string, std::string> texts;
    for (const auto& [title, value] : controller->summaryInfoWithDispOrderKey(orderKey)) {
      if (const auto* text = value->as<std::string>()) texts[title] = *text;
      if (const auto* titles = value->as<platform::Array>()) {
        for (const auto& entry : *titles) texts[title] += *entry->as<std::string>() + ',';
      }
    }
    return texts;
  }
  using Texts = std::map<std::string, std::string>;
};

TEST_F(SummaryInfo, RestoresAndListsTheOnOffSettingOnlyWhileItIsOff) {
  makeController();
  EXPECT_EQ(summary(), (Texts{{"Trim It", "No"}}));
  EXPECT_THAT(settings().log, ElementsAre("get MVTandemTrim"));
}

TEST_F(SummaryInfo, CountsAnythingButExactlyOnAsOffAndShowsItLocalized) {
  makeController();
  bundle->strings["on"] = "almost";
  settings().values["MVTandemTrim"] = "on";
  EXPECT_EQ(summary(), (Texts{{"Trim It", "almost"}}));
  settings().values["MVTandemTrim"] = "perhaps";
  EXPECT_EQ(summary(), (Texts{{"Trim It", "perhaps"}}));
}

TEST_F(SummaryInfo, ListsSixSettingsAndTheirOrderUnderTheGivenKeyWhileItIsOn) {
  scene.stored = {
      {"MVTandemTrim", "On"}, {"MVImageDirectionPriority", "ShortEdgeFeed"}, {"MVTopMargin", "12"}};
  makeController();
  EXPECT_EQ(summary("Any Key"), (Texts{{"Which Way", "Short Edge First"},
                                       {"Where", "Midships"},
                                       {"Above", "12"},
                                       {"Below", "6"},
                                       {"Before", "7"},
                                       {"Behind", "8"},
                                       {"Any Key", "Which Way,Where,Above,Below,Before,Behind,"}}));
  EXPECT_THAT(settings().log,
              ElementsAre("get MVTandemTrim", "get MVImageDirectionPriority", "get MVPrintPosition",
                          "get MVTopMargin", "get MVBottomMargin", "get MVLeftMargin", "get MVRightMargin"));
}

TEST_F(SummaryInfo, ShowsMarginsAsTheyAreStoredNeverTheirLocalizedText) {
  scene.stored = {{"MVTandemTrim", "On"}, {"MVLeftMargin", ""}};
  for (const char* key : {"MVTopMargin", "MVBottomMargin", "MVRightMargin"}) scene.stored[key] = "Left";
  makeController();
  bundle->strings[""] = "nothing";
  ASSERT_NE(bundle->localizedStringForKey("Left", "", std::nullopt), "Left");
  const auto texts = summary();
  for (const char* title : {"Above", "Below", "Behind"}) EXPECT_EQ(texts.at(title), "Left") << title;
  EXPECT_EQ(texts.at("Before"), "");
}

TEST_F(SummaryInfo, ReadsDefaultsWhereTheJobHasNoSettings) {
  makeController();
  settings().values = {{"MVTandemTrim", "On"}};
  EXPECT_EQ(summary().at("Above"), "5");
  EXPECT_EQ(settings().values.size(), 1U);
}

TEST_F(SummaryInfo, LetsALaterRowReplaceOneOfTheSameTitle) {
  scene.stored["MVTandemTrim"] = "On";
  scene.strings["TopMargin"] = scene.strings["RightMargin"] = "Edge";
  makeController();
  EXPECT_EQ(summary().at("Edge"), "8");
  EXPECT_EQ(summary().at(kOrder), "Which Way,Where,Edge,Below,Before,Edge,");
}

TEST_F(SummaryInfo, RestoresStoredValuesInTheControlsWithoutGreyingThem) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  nib.margins[kTop].textBox.text = "typed";
  nib.tandemTrimValid.current = 1;
  forget();
  (void)summary();
  EXPECT_THAT(log, ElementsAre("tandemTrimValid state=0"));
  settings().values["MVTandemTrim"] = "On";
  forget();
  (void)summary();
  EXPECT_EQ(log.size(), 11U);
  EXPECT_EQ(nib.margins[kTop].textBox.text, "5");
  EXPECT_EQ(nib.margins[kTop].stepper.text, "5");
}

TEST_F(SummaryInfo, MayBeChangedByTheHostAndFollowsTheSettings) {
  scene.stored["MVTandemTrim"] = "On";
  makeController();
  auto first = controller->summaryInfoWithDispOrderKey(kOrder);
  const auto texts = summary();
  EXPECT_EQ(summary(), texts);
  for (auto& [title, value] : first) value = number(0);
  first["A title of the host's"] = number(1);
  EXPECT_EQ(summary(), texts);
  settings().values["MVTopMargin"] = "33";
  EXPECT_EQ(summary().at("Above"), "33");
  EXPECT_EQ(first.at("Above")->integerValue(), 0);
}

TEST_F(SummaryInfo, NeverWritesThePrintSettings) {
  scene.stored["MVTandemTrim"] = "On";
  makeController();
  (void)summary();
  EXPECT_THAT(settings().log, testing::Each(testing::StartsWith("get ")));
}

}  // namespace
}  // namespace tandemtrim::test
