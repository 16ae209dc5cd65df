#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsEmpty;
using testing::IsNull;

using Controller = MorvaTTViewControllerKV2;

template <auto getter>
platform::NibObject* get(const Controller& controller) {
  return (controller.*getter)();
}

// What a controller answers for each outlet.
const std::map<std::string_view, platform::NibObject* (*)(const Controller&)> kGetters{
    {"labelDirection", get<&Controller::labelDirection>},
    {"labelPosition", get<&Controller::labelPosition>},
    {"labelMarginTop", get<&Controller::labelMarginTop>},
    {"labelMarginBottom", get<&Controller::labelMarginBottom>},
    {"labelMarginLeft", get<&Controller::labelMarginLeft>},
    {"labelMarginRight", get<&Controller::labelMarginRight>},
    {"labelMarginLimitTop", get<&Controller::labelMarginLimitTop>},
    {"labelMarginLimitBottom", get<&Controller::labelMarginLimitBottom>},
    {"labelMarginLimitLeft", get<&Controller::labelMarginLimitLeft>},
    {"labelMarginLimitRight", get<&Controller::labelMarginLimitRight>},
    {"textBoxMarginTop", get<&Controller::textBoxMarginTop>},
    {"textBoxMarginBottom", get<&Controller::textBoxMarginBottom>},
    {"textBoxMarginLeft", get<&Controller::textBoxMarginLeft>},
    {"textBoxMarginRight", get<&Controller::textBoxMarginRight>},
    {"stepperMarginTop", get<&Controller::stepperMarginTop>},
    {"stepperMarginBottom", get<&Controller::stepperMarginBottom>},
    {"stepperMarginLeft", get<&Controller::stepperMarginLeft>},
    {"stepperMarginRight", get<&Controller::stepperMarginRight>},
    {"tandemTrimValid", get<&Controller::tandemTrimValid>},
    {"directionPopUp", get<&Controller::directionPopUp>},
    {"positionPopUp", get<&Controller::positionPopUp>},
    {"defaultButton", get<&Controller::defaultButton>},
    {"tandemTrimView", get<&Controller::tandemTrimView>},
};

class Outlets : public ViewTest {
 protected:
  Outlets() { makeController(); }
  void expectOutletsEmptyExcept(std::string_view connected) {
    for (const auto& [outlet, getter] : kGetters) {
      EXPECT_EQ(getter(*controller) == nullptr, outlet != connected) << outlet << " after " << connected;
    }
  }
};

TEST_F(Outlets, AreTwentyThreeAndEmptyAtFirst) {
  const auto names = controller->outletNames();
  EXPECT_EQ(names.size(), 23U);
  for (const auto& name : names) EXPECT_TRUE(kGetters.contains(name)) << name;
  expectOutletsEmptyExcept("");
}

TEST_F(Outlets, ReferToTheObjectThatIsConnectedUnderTheirName) {
  for (const auto& [outlet, object] : nib.outlets()) {
    makeController();
    controller->setOutlet(outlet, object);
    EXPECT_EQ(kGetters.at(outlet)(*controller), object) << outlet;
    expectOutletsEmptyExcept(outlet);
  }
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Outlets, StayAsTheyAreForAnUnknownNameNoneOrAnObjectOfAnotherClass) {
  controller->setOutlet("viewIsInited", &nib.labelPosition);
  controller->setOutlet("", &nib.labelPosition);
  expectOutletsEmptyExcept("");
  for (const auto& name : controller->outletNames()) {
    platform::NibObject* other = &nib.defaultButton;
    if (name == "defaultButton") other = &nib.labelPosition;
    controller->setOutlet(name, other);
    controller->setOutlet(name, nullptr);
  }
  expectOutletsEmptyExcept("");
}

TEST_F(Outlets, KeepTheirObjectWhenNoneIsConnectedLater) {
  controller->setOutlet("labelPosition", &nib.labelPosition);
  controller->setOutlet("labelPosition", nullptr);
  EXPECT_EQ(controller->labelPosition(), &nib.labelPosition);
  controller->setLabelPosition(nullptr);
  EXPECT_THAT(controller->labelPosition(), IsNull());
}

class Actions : public ViewTest {
 protected:
  Actions() {
    connectOutlets();
    controller->TTVCInitializeTicket();
    forget();
  }
};

TEST_F(Actions, OfTheCheckBoxGreyWhateverSentThemEvenBeforeTheViewIsSetUp) {
  ASSERT_FALSE(controller->viewIsInited());
  controller->performAction("changeTandemTrimValid:", &nib.defaultButton);
  controller->performAction("changeTandemTrimValid:", nullptr);
  EXPECT_EQ(log.size(), 2 * 21U);
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Actions, OfTheButtonShowTheDefaultsOfSixSettingsAndNothingElse) {
  nib.tandemTrimValid.current = 1;
  controller->performAction("setDefaultValue:", nullptr);
  EXPECT_THAT(log, testing::ElementsAre(
                       "directionPopUp selected=Long Edge First", "positionPopUp selected=Midships",
                       "textBoxMarginTop text=5", "stepperMarginTop text=5", "textBoxMarginBottom text=6",
                       "stepperMarginBottom text=6", "textBoxMarginLeft text=7", "stepperMarginLeft text=7",
                       "textBoxMarginRight text=8", "stepperMarginRight text=8"));
  EXPECT_EQ(nib.tandemTrimValid.current, 1);
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Actions, OfAnotherNameDoNothing) {
  for (const char* name : {"", "setDefaultValue", "changeTandemTrimValid", "controlTextDidChange:"}) {
    controller->performAction(name, &nib.defaultButton);
  }
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::test
