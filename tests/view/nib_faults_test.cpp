#include <stdexcept>

#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsEmpty;
using testing::IsNull;

class NibFaults : public ViewTest {
 protected:
  // Expects a failed set-up to leave a view that shows nothing, stores nothing and observes nothing.
  void expectSilentView() {
    EXPECT_FALSE(controller->viewIsInited());
    EXPECT_THAT(center.subscriptions, IsEmpty());
    forget();
    EXPECT_EQ(controller->panelViewWithNibName("TandemTrim"), &nib.tandemTrimView);
    EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
    EXPECT_TRUE(controller->saveNonPPDSettingsToPrintSettings());
    controller->updateView();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(settings().log, IsEmpty());
    controller.reset();
    EXPECT_THAT(log, testing::ElementsAre("nib released"));
  }
};

class MissingOutlet : public NibFaults, public testing::WithParamInterface<std::string_view> {};

TEST_P(MissingOutlet, AbortsTheSetUpBeforeTheViewCountsAsSetUp) {
  makeController();
  missingOutlets.insert(GetParam());
  EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::invalid_argument);
  expectSilentView();
}

std::vector<std::string_view> outletsOfControls() {
  std::vector<std::string_view> names{"labelDirection", "labelPosition", "tandemTrimValid",
                                      "directionPopUp", "positionPopUp", "defaultButton"};
  for (const auto& margin : kMarginOutlets)
    names.insert(names.end(), {margin.label, margin.limitLabel, margin.textBox, margin.stepper});
  return names;
}

INSTANTIATE_TEST_SUITE_P(Of, MissingOutlet, testing::ValuesIn(outletsOfControls()),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(NibFaults, AbortTheSetUpWithoutTheNib) {
  makeController();
  for (const auto& [outlet, object] : nib.outlets()) missingOutlets.insert(outlet);
  EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::invalid_argument);
  EXPECT_FALSE(controller->viewIsInited());
  EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::invalid_argument);
  EXPECT_EQ(std::ranges::count(log, "load TandemTrim"), 2);
}

TEST_F(NibFaults, ReturnNoViewButCompleteTheSetUpWhenOnlyTheViewIsMissing) {
  makeController();
  missingOutlets.insert("tandemTrimView");
  EXPECT_THAT(controller->panelViewWithNibName("TandemTrim"), IsNull());
  EXPECT_TRUE(controller->viewIsInited());
  EXPECT_EQ(center.subscriptions.size(), 4U);
  log.clear();
  EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
  EXPECT_EQ(nib.margins[kTop].textBox.text, "5");
}

// Earlier nibs stay: their boxes are still subscribed to and their controls may still be connected.
TEST_F(NibFaults, LoadAgainWhileTheViewIsMissingAndKeepEveryLoadedNib) {
  makeController();
  missingOutlets.insert("tandemTrimView");
  EXPECT_THAT(controller->panelViewWithNibName("TandemTrim"), IsNull());
  EXPECT_THAT(controller->panelViewWithNibName("TandemTrim"), IsNull());
  missingOutlets.clear();
  EXPECT_EQ(controller->panelViewWithNibName("TandemTrim"), &nib.tandemTrimView);
  EXPECT_EQ(std::ranges::count(log, "load TandemTrim"), 3);
  EXPECT_EQ(std::ranges::count(log, "nib released"), 0);
  controller.reset();
  EXPECT_THAT(center.subscriptions, IsEmpty());
  EXPECT_EQ(std::ranges::count(log, "nib released"), 3);
}

TEST_F(NibFaults, RaiseForAMenuWithMoreItemsThanNames) {
  makeController();
  nib.positionPopUp.items.emplace_back("positionPopUp 3", log);
  EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::out_of_range);
  EXPECT_EQ(log.back(), "positionPopUp 2 title=Starboard");
  expectSilentView();
}

TEST_F(NibFaults, RaiseForTheOtherMenuToo) {
  makeController();
  nib.directionPopUp.items.emplace_back("directionPopUp 2", log);
  EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::out_of_range);
  EXPECT_EQ(log.back(), "directionPopUp 1 title=Short Edge First");
  expectSilentView();
}

TEST_F(NibFaults, LeaveNamesUnusedWhenAMenuHasFewerItems) {
  nib.positionPopUp.items.pop_back();
  nib.directionPopUp.items.clear();
  ASSERT_NO_FATAL_FAILURE(loadView());
  EXPECT_TRUE(controller->viewIsInited());
  EXPECT_EQ(nib.positionPopUp.items.at(1).value, "Center");
}

TEST_F(NibFaults, LeaveNoSubscriptionBehindWhenOneIsRefused) {
  for (const std::size_t capacity : {0U, 1U, 3U}) {
    makeController();
    center.capacity = capacity;
    EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::bad_alloc);
    EXPECT_THAT(center.subscriptions, IsEmpty());
    EXPECT_FALSE(controller->viewIsInited());
  }
}

TEST_F(NibFaults, LeaveTheSubscriptionsOfAnEarlierSetUpWhenALaterOneFails) {
  for (const std::size_t capacity : {4U, 5U, 7U}) {
    makeController();
    missingOutlets.insert("tandemTrimView");
    EXPECT_THAT(controller->panelViewWithNibName("TandemTrim"), IsNull());
    center.capacity = capacity;
    EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::bad_alloc);
    center.capacity.reset();
    std::vector<const platform::NibObject*> boxes;
    for (const auto& subscription : center.subscriptions) boxes.push_back(subscription.object);
    EXPECT_THAT(boxes, testing::ElementsAre(&nib.margins[kTop].textBox, &nib.margins[kBottom].textBox,
                                            &nib.margins[kLeft].textBox, &nib.margins[kRight].textBox))
        << capacity;
    controller.reset();
    EXPECT_THAT(center.subscriptions, IsEmpty());
  }
}

TEST_F(NibFaults, LeaveNoSubscriptionBehindWhenAControlRaises) {
  struct Refusing : RecordingStepper {
    using RecordingStepper::RecordingStepper;
    void setMaxValue(double) override { throw std::bad_alloc(); }
  };
  Refusing stepper("stepperMarginRight", log);
  connectOutlets();
  controller->setStepperMarginRight(&stepper);
  EXPECT_THROW(controller->TTVCInitializeMargin(), std::bad_alloc);
  EXPECT_THAT(center.subscriptions, IsEmpty());
}

struct Entry {
  const char* keyPath;
  const char* value;
};

// With these entries the panel itself can be made, but not its labels.
TEST_F(NibFaults, AbortTheSetUpAtTheLabelsWhereTheRangeCannotBeWritten) {
  const Entry entries[] = {{"DefaultValue.MarginMin", "<string>0</string>"},
                           {"DefaultValue.MarginMin", nullptr},
                           {"Wording.MinLabelForValueRange", nullptr},
                           {"Wording.MaxLabelForValueRange", nullptr},
                           {"Wording.MinLabelForValueRange", "<integer>0</integer>"},
                           {"DefaultValue.MarginMax", "<string>5</string>"}};
  const auto ordinary = scene.settingInfo;
  for (const auto& [keyPath, value] : entries) {
    scene.settingInfo = ordinary;
    scene.settingInfo.erase(keyPath);
    if (value != nullptr) scene.settingInfo[keyPath] = value;
    makeController();
    EXPECT_THROW((void)controller->panelViewWithNibName("TandemTrim"), std::invalid_argument) << keyPath;
    EXPECT_EQ(log.size(), 1U + 6U) << "the nib and six labels";
    expectSilentView();
  }
}

}  // namespace
}  // namespace tandemtrim::test
