#include <algorithm>
#include <span>

#include "platform/notifications.hpp"
#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class ViewSetUp : public ViewTest {
 protected:
  // `count` lines of the log from `first` on.
  [[nodiscard]] std::span<const std::string> lines(std::size_t first, std::size_t count) const {
    return std::span(log).subspan(first, count);
  }
  static Log linesOfSide(const conformance::SceneSide& side) {
    const auto box = "textBoxMargin" + side.name;
    const auto stepper = "stepperMargin" + side.name;
    return {box + " identifier=" + side.name,
            box + " min=0",
            box + " max=" + std::to_string(side.limit),
            stepper + " identifier=" + side.name,
            stepper + " min=0",
            stepper + " max=" + std::to_string(side.limit),
            "subscribe " + side.name};
  }
};

TEST_F(ViewSetUp, RunsItsStepsInOrderAfterTheNibIsLoaded) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  ASSERT_EQ(log.size(), 1 + 10 + 10 + 2 + 4 * 7U);
  EXPECT_EQ(log[0], "load TandemTrim");
  EXPECT_THAT(lines(1, 6),
              UnorderedElementsAre("labelDirection text=Which Way:", "labelPosition text=Where:",
                                   "labelMarginTop text=Above:", "labelMarginBottom text=Below:",
                                   "labelMarginLeft text=Before:", "labelMarginRight text=Behind:"));
  EXPECT_THAT(lines(7, 4), UnorderedElementsAre("labelMarginLimitTop text=mm   from 0 up to 50",
                                                "labelMarginLimitBottom text=mm   from 0 up to 40",
                                                "labelMarginLimitLeft text=mm   from 0 up to 20",
                                                "labelMarginLimitRight text=mm   from 0 up to 10"));
  EXPECT_THAT(lines(11, 10),
              ElementsAre("positionPopUp 0 value=Left", "positionPopUp 0 title=Port",
                          "positionPopUp 1 value=Center", "positionPopUp 1 title=Midships",
                          "positionPopUp 2 value=Right", "positionPopUp 2 title=Starboard",
                          "directionPopUp 0 value=LongEdgeFeed", "directionPopUp 0 title=Long Edge First",
                          "directionPopUp 1 value=ShortEdgeFeed", "directionPopUp 1 title=Short Edge First"));
  EXPECT_THAT(lines(21, 2), ElementsAre("tandemTrimValid title=Trim It", "defaultButton title=As It Was"));
  for (std::size_t side = 0; side < kSides; ++side) {
    EXPECT_THAT(lines(23 + 7 * side, 7), ElementsAreArray(linesOfSide(conformance::kSceneSides.at(side))));
  }
  EXPECT_TRUE(controller->viewIsInited());
}

TEST_F(ViewSetUp, NeitherRestoresNorGreysNorStores) {
  scene.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "12"}};
  ASSERT_NO_FATAL_FAILURE(loadView());
  EXPECT_EQ(nib.tandemTrimValid.current, 0);
  EXPECT_EQ(nib.margins[kTop].textBox.text, "");
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(ViewSetUp, MarksTheViewAsSetUpOnlyAtItsEnd) {
  connectOutlets();
  controller->TTVCInitializeLabel();
  controller->TTVCInitializePopUp();
  controller->TTVCInitializeTicket();
  controller->TTVCInitializeMargin();
  EXPECT_FALSE(controller->viewIsInited());
  controller->TTVCInitializeView();
  EXPECT_TRUE(controller->viewIsInited());
  controller->setViewIsInited(false);
  EXPECT_FALSE(controller->viewIsInited());
}

TEST_F(ViewSetUp, RegistersTheControlsOfEachTicketTheTextBoxBeforeItsStepper) {
  connectOutlets();
  controller->TTVCInitializeTicket();
  const auto& tickets = *controller->ticket();
  EXPECT_THAT(tickets.ticketValid()->targetInstances(), ElementsAre(&nib.tandemTrimValid));
  EXPECT_THAT(tickets.ticketDirection()->targetInstances(), ElementsAre(&nib.directionPopUp));
  EXPECT_THAT(tickets.ticketPosition()->targetInstances(), ElementsAre(&nib.positionPopUp));
  EXPECT_THAT(tickets.ticketMarginTop()->targetInstances(),
              ElementsAre(&nib.margins[kTop].textBox, &nib.margins[kTop].stepper));
  EXPECT_THAT(tickets.ticketMarginBottom()->targetInstances(),
              ElementsAre(&nib.margins[kBottom].textBox, &nib.margins[kBottom].stepper));
  EXPECT_THAT(tickets.ticketMarginLeft()->targetInstances(),
              ElementsAre(&nib.margins[kLeft].textBox, &nib.margins[kLeft].stepper));
  EXPECT_THAT(tickets.ticketMarginRight()->targetInstances(),
              ElementsAre(&nib.margins[kRight].textBox, &nib.margins[kRight].stepper));
}

TEST_F(ViewSetUp, UsesTheObjectsOfTheMinimumAndTheLimitAsEachBoxsRange) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  const std::pair<const RecordingTextBox*, const char*> boxes[] = {{&nib.margins[kTop].textBox, "Top"},
                                                                   {&nib.margins[kBottom].textBox, "Bottom"},
                                                                   {&nib.margins[kLeft].textBox, "Left"},
                                                                   {&nib.margins[kRight].textBox, "Right"}};
  for (const auto& [box, name] : boxes) {
    EXPECT_EQ(box->min(), info->defaultMarginMin());
    EXPECT_EQ(box->max(), info->marginLimit(name));
  }
}

TEST_F(ViewSetUp, GivesSteppersTheIntegerPartsOfTheBounds) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<real>2.9</real>";
  scene.settingInfo["DefaultValue.MarginMax"] = "<real>9.9</real>";
  ASSERT_NO_FATAL_FAILURE(loadView());
  for (const char* line : {"stepperMarginTop min=2", "stepperMarginTop max=9"}) {
    EXPECT_THAT(log, testing::Contains(line));
  }
  EXPECT_EQ(nib.margins[kTop].limitLabel.text, "mm   from 2.9 up to 9.9");
}

TEST_F(ViewSetUp, SubscribesOnceToTheTextChangesOfEachBoxAndOfNothingElse) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  std::vector<const platform::NibObject*> objects;
  for (const auto& subscription : center.subscriptions) {
    EXPECT_EQ(subscription.name, "NSControlTextDidChangeNotification");
    EXPECT_EQ(subscription.observer, controller.get());
    objects.push_back(subscription.object);
  }
  EXPECT_THAT(objects, ElementsAre(&nib.margins[kTop].textBox, &nib.margins[kBottom].textBox,
                                   &nib.margins[kLeft].textBox, &nib.margins[kRight].textBox));
}

TEST_F(ViewSetUp, IsDoneOnceHoweverOftenTheViewIsRequested) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  log.clear();
  EXPECT_EQ(controller->panelViewWithNibName("TandemTrim"), &nib.tandemTrimView);
  EXPECT_EQ(controller->panelViewWithNibName("Another"), &nib.tandemTrimView);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ViewSetUp, LoadsTheNibThatIsNamed) {
  makeController();
  (void)controller->panelViewWithNibName("Another");
  EXPECT_EQ(log.front(), "load Another");
}

struct RangeText {
  const char* format;
  const char* minToken;
  const char* maxToken;
  const char* text;
};

TEST_F(ViewSetUp, ReplacesTheMinimumsTokenInTheRangeTextBeforeTheMaximums) {
  const RangeText texts[] = {
      {"[min]-[max]", "[min]", "[max]", "mm   0-50"},
      {"[max] [min] [max] [min]", "[min]", "[max]", "mm   50 0 50 0"},
      {"[min]-[max]", "[min]", "0", "mm   50-[max]"},
      {"[min]-[max]", "[max]", "[min]", "mm   50-0"},
      {"x", "x", "x", "mm   0"},
      {"a-b", "", "b", "mm   a-50"},
      {"a-b", "a", "", "mm   0-b"},
      {"", "a", "b", "mm   "},
      {"aaa", "aa", "b", "mm   0a"},
      {"%@ %d", "%@", "%d", "mm   0 50"},
  };
  for (const auto& [format, minToken, maxToken, text] : texts) {
    scene.strings["IntegerValueRangeFormat"] = format;
    scene.settingInfo["Wording.MinLabelForValueRange"] = std::string("<string>") + minToken + "</string>";
    scene.settingInfo["Wording.MaxLabelForValueRange"] = std::string("<string>") + maxToken + "</string>";
    connectOutlets();
    controller->TTVCInitializeLabel();
    EXPECT_EQ(nib.margins[kTop].limitLabel.text, text) << format;
  }
}

}  // namespace
}  // namespace tandemtrim::test
