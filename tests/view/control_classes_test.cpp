#include "tests/support/core_test.hpp"
#include "tests/support/recording/controls.hpp"

namespace tandemtrim::test {
namespace {

using platform::makeObject;
using platform::Object;
using testing::ElementsAre;
using testing::IsNull;

class ControlClasses : public testing::Test {
 protected:
  // The calls that a control makes for this flag.
  Log callsFor(ViewComponent& control, const Object& flag) {
    log.clear();
    control.changeState(flag);
    return log;
  }

  Log log;
  RecordingLabel label{"control", log};
  RecordingTextBox box{"control", log};
};

TEST_F(ControlClasses, AreEnabledAndDisabledByTheFlag) {
  RecordingCheckBox checkBox("control", log);
  RecordingPopUp menu("control", log, 0);
  RecordingStepper stepper("control", log);
  RecordingButton button("control", log);
  for (ViewComponent* control :
       std::initializer_list<ViewComponent*>{&checkBox, &menu, &box, &button, &stepper}) {
    EXPECT_THAT(callsFor(*control, Object(true)), ElementsAre("control enabled=true"));
    EXPECT_THAT(callsFor(*control, Object(false)), ElementsAre("control enabled=false"));
  }
}

TEST_F(ControlClasses, RecolourALabelAndNeverDisableIt) {
  EXPECT_THAT(callsFor(label, Object(true)), ElementsAre("control color=black"));
  EXPECT_THAT(callsFor(label, Object(false)), ElementsAre("control color=gray"));
}

TEST_F(ControlClasses, ShowALabelAsLiveOnlyForExactlyTrue) {
  EXPECT_THAT(callsFor(label, Object(std::int64_t{2})), ElementsAre("control color=gray"));
  EXPECT_THAT(callsFor(label, Object(std::int64_t{-1})), ElementsAre("control color=gray"));
  EXPECT_THAT(callsFor(box, Object(std::int64_t{2})), ElementsAre("control enabled=true"));
}

TEST_F(ControlClasses, SetABoxsMinimumBeforeItsMaximumThroughTheSetters) {
  const auto min = number(3);
  const auto max = number(9);
  box.setValueRange(min, max);
  EXPECT_THAT(log, ElementsAre("control min=3", "control max=9"));
  EXPECT_EQ(box.min(), min);
  EXPECT_EQ(box.max(), max);
}

TEST_F(ControlClasses, ReturnTheSameNumberWithinABoxsRange) {
  box.setValueRange(number(3), makeObject(9.5));
  for (const Object& value : {Object(std::int64_t{3}), Object(9.9), Object("5 mm")}) {
    EXPECT_EQ(box.verifyValue(value), &value);
  }
}

TEST_F(ControlClasses, ReturnTheBoundForANumberBeyondIt) {
  box.setValueRange(makeObject(2.5), makeObject("9"));
  EXPECT_EQ(box.verifyValue(*number(1)), box.min().get());
  EXPECT_EQ(box.verifyValue(*number(10)), box.max().get());
}

TEST_F(ControlClasses, CheckTheMinimumFirstWhereABoxsBoundsCross) {
  box.setValueRange(number(9), number(3));
  for (const int below : {0, 3, 5, 8}) EXPECT_EQ(box.verifyValue(*number(below)), box.min().get());
  for (const int other : {9, 10}) EXPECT_EQ(box.verifyValue(*number(other)), box.max().get());
}

TEST_F(ControlClasses, CountAMissingBoundOfABoxAsZero) {
  const auto zero = number(0);
  EXPECT_EQ(box.verifyValue(*zero), zero.get());
  EXPECT_THAT(box.verifyValue(*number(1)), IsNull());
  EXPECT_THAT(box.verifyValue(*number(-1)), IsNull());
}

}  // namespace
}  // namespace tandemtrim::test
