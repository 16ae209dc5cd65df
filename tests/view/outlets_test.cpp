#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsEmpty;
using testing::IsNull;

using Controller = MorvaTTViewControllerKV2;

// What a controller answers for each outlet.
const std::map<std::string_view, platform::NibObject* (*)(const Controller&)> kGetters{
    {"labelDirection", [](const Controller& c) -> platform::NibObject* { return c.labelDirection(); }},
    {"labelPosition", [](const Controller& c) -> platform::NibObject* { return c.labelPosition(); }},
    {"labelMarginTop", [](const Controller& c) -> platform::NibObject* { return c.labelMarginTop(); }},
    {"labelMarginBottom", [](const Controller& c) -> platform::NibObject* { return c.labelMarginBottom(); }},
    {"labelMarginLeft", [](const Controller& c) -> platform::NibObject* { return c.labelMarginLeft(); }},
    {"labelMarginRight", [](const Controller& c) -> platform::NibObject* { return c.labelMarginRight(); }},
    {"labelMarginLimitTop",
     [](const Controller& c) -> platform::NibObject* { return c.labelMarginLimitTop(); }},
    {"labelMarginLimitBottom",
     [](const Controller& c) -> platform::NibObject* { return c.labelMarginLimitBottom(); }},
    {"labelMarginLimitLeft",
     [](const Controller& c) -> platform::NibObject* { return c.labelMarginLimitLeft(); }},
    {"labelMarginLimitRight",
     [](const Controller& c) -> platform::NibObject* { return c.labelMarginLimitRight(); }},
    {"textBoxMarginTop", [](const Controller& c) -> platform::NibObject* { return c.textBoxMarginTop(); }},
    {"textBoxMarginBottom",
     [](const Controller& c) -> platform::NibObject* { return c.textBoxMarginBottom(); }},
    {"textBoxMarginLeft", [](const Controller& c) -> platform::NibObject* { return c.textBoxMarginLeft(); }},
    {"textBoxMarginRight",
     [](const Controller& c) -> platform::NibObject* { return c.textBoxMarginRight(); }},
    {"stepperMarginTop", [](const Controller& c) -> platform::NibObject* { return c.stepperMarginTop(); }},
    {"stepperMarginBottom",
     [](const Controller& c) -> platform::NibObject* { return c.stepperMarginBottom(); }},
    {"stepperMarginLeft", [](const Controller& c) -> platform::NibObject* { return c.stepperMarginLeft(); }},
    {"stepperMarginRight",
     [](const Controller& c) -> platform::NibObject* { return c.stepperMarginRight(); }},
    {"tandemTrimValid", [](const Controller& c) -> platform::NibObject* { return c.tandemTrimValid(); }},
    {"directionPopUp", [](const Controller& c) -> platform::NibObject* { return c.directionPopUp(); }},
    {"positionPopUp", [](const Controller& c) -> platform::NibObject* { return c.positionPopUp(); }},
    {"defaultButton", [](const Controller& c) -> platform::NibObject* { return c.defaultButton(); }},
    {"tandemTrimView", [](const Controller& c) -> platform::NibObject* { return c.tandemTrimView(); }},
};

class Outlets : public ViewTest {
 protected:
  Outlets() { makeController(); }
  void expectOutletsEmptyExcept(std::string_view connected) {
    for (const auto& [outlet, get] : kGetters) {
      EXPECT_EQ(get(*controller) == nullptr, outlet != connected) << outlet << " after " << connected;
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
