#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsEmpty;
using testing::IsNull;

using Controller = MorvaTTViewControllerKV2;

// The getter and the setter of an outlet.
struct Accessors {
  platform::NibObject* (*get)(const Controller&);
  void (*set)(Controller&, platform::NibObject*);
};

template <auto getter, auto setter>
constexpr Accessors kAccessors{
    [](const Controller& controller) -> platform::NibObject* { return (controller.*getter)(); },
    [](Controller& controller, platform::NibObject* object) {
      using Control = std::invoke_result_t<decltype(getter), Controller>;
      (controller.*setter)(dynamic_cast<Control>(object));
    }};

const std::map<std::string_view, Accessors> kOutlets{
    {"labelDirection", kAccessors<&Controller::labelDirection, &Controller::setLabelDirection>},
    {"labelPosition", kAccessors<&Controller::labelPosition, &Controller::setLabelPosition>},
    {"labelMarginTop", kAccessors<&Controller::labelMarginTop, &Controller::setLabelMarginTop>},
    {"labelMarginBottom", kAccessors<&Controller::labelMarginBottom, &Controller::setLabelMarginBottom>},
    {"labelMarginLeft", kAccessors<&Controller::labelMarginLeft, &Controller::setLabelMarginLeft>},
    {"labelMarginRight", kAccessors<&Controller::labelMarginRight, &Controller::setLabelMarginRight>},
    {"labelMarginLimitTop",
     kAccessors<&Controller::labelMarginLimitTop, &Controller::setLabelMarginLimitTop>},
    {"labelMarginLimitBottom",
     kAccessors<&Controller::labelMarginLimitBottom, &Controller::setLabelMarginLimitBottom>},
    {"labelMarginLimitLeft",
     kAccessors<&Controller::labelMarginLimitLeft, &Controller::setLabelMarginLimitLeft>},
    {"labelMarginLimitRight",
     kAccessors<&Controller::labelMarginLimitRight, &Controller::setLabelMarginLimitRight>},
    {"textBoxMarginTop", kAccessors<&Controller::textBoxMarginTop, &Controller::setTextBoxMarginTop>},
    {"textBoxMarginBottom",
     kAccessors<&Controller::textBoxMarginBottom, &Controller::setTextBoxMarginBottom>},
    {"textBoxMarginLeft", kAccessors<&Controller::textBoxMarginLeft, &Controller::setTextBoxMarginLeft>},
    {"textBoxMarginRight", kAccessors<&Controller::textBoxMarginRight, &Controller::setTextBoxMarginRight>},
    {"stepperMarginTop", kAccessors<&Controller::stepperMarginTop, &Controller::setStepperMarginTop>},
    {"stepperMarginBottom",
     kAccessors<&Controller::stepperMarginBottom, &Controller::setStepperMarginBottom>},
    {"stepperMarginLeft", kAccessors<&Controller::stepperMarginLeft, &Controller::setStepperMarginLeft>},
    {"stepperMarginRight", kAccessors<&Controller::stepperMarginRight, &Controller::setStepperMarginRight>},
    {"tandemTrimValid", kAccessors<&Controller::tandemTrimValid, &Controller::setTandemTrimValid>},
    {"directionPopUp", kAccessors<&Controller::directionPopUp, &Controller::setDirectionPopUp>},
    {"positionPopUp", kAccessors<&Controller::positionPopUp, &Controller::setPositionPopUp>},
    {"defaultButton", kAccessors<&Controller::defaultButton, &Controller::setDefaultButton>},
    {"tandemTrimView", kAccessors<&Controller::tandemTrimView, &Controller::setTandemTrimView>},
};

class Outlets : public ViewTest {
 protected:
  Outlets() { makeController(); }
  void expectOutletsEmptyExcept(std::string_view connected) {
    for (const auto& [outlet, accessors] : kOutlets) {
      EXPECT_EQ(accessors.get(*controller) == nullptr, outlet != connected)
          << outlet << " after " << connected;
    }
  }
};

TEST_F(Outlets, AreTwentyThreeAndEmptyAtFirst) {
  const auto names = controller->outletNames();
  EXPECT_EQ(names.size(), 23U);
  for (const auto& name : names) EXPECT_TRUE(kOutlets.contains(name)) << name;
  expectOutletsEmptyExcept("");
}

TEST_F(Outlets, ReferToTheObjectThatIsConnectedUnderTheirName) {
  for (const auto& [outlet, object] : nib.outlets()) {
    makeController();
    controller->setOutlet(outlet, object);
    EXPECT_EQ(kOutlets.at(outlet).get(*controller), object) << outlet;
    expectOutletsEmptyExcept(outlet);
  }
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(Outlets, ReferToTheObjectThatTheirSetterSets) {
  for (const auto& [outlet, object] : nib.outlets()) {
    kOutlets.at(outlet).set(*controller, object);
    EXPECT_EQ(kOutlets.at(outlet).get(*controller), object) << outlet;
    expectOutletsEmptyExcept(outlet);
    kOutlets.at(outlet).set(*controller, nullptr);
  }
  expectOutletsEmptyExcept("");
}

TEST_F(Outlets, StayUnchangedForAnUnknownNameNullOrAnObjectOfAnotherClass) {
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

TEST_F(Outlets, KeepTheirObjectWhenNullIsConnectedLater) {
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

TEST_F(Actions, OfTheCheckBoxGreyForAnySenderEvenBeforeTheViewIsSetUp) {
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
