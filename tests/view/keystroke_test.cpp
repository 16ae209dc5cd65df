#include "adapters/memory/panel.hpp"
#include "tests/support/core_test.hpp"
#include "tests/support/heap.hpp"
#include "view/view_controller.hpp"

namespace tandemtrim::test {
namespace {

class Keystroke : public CoreTest {
 protected:
  // Limits of 15 digits, so that typed numbers are not clamped.
  void SetUp() override {
    scene.settingInfo["DefaultValue.MarginMax"] = "<integer>999999999999999</integer>";
    for (auto& [keyword, value] : *scene.ppdAttributes) value = "999999999999999";
    info = makeCommonInfo();
    controller = MorvaTTViewControllerKV2::initWithCommonInfo(info);
    view = dynamic_cast<platform::memory::PanelView*>(controller->panelViewWithNibName("TandemTrim"));
    ASSERT_NE(view, nullptr);
  }

  std::shared_ptr<MorvaTTCommonInfoKV2> info;
  std::unique_ptr<MorvaTTViewControllerKV2> controller;
  platform::memory::PanelView* view = nullptr;
};

TEST_F(Keystroke, AllocatesNothingForUpToFifteenDigits) {
  for (const char* box : {"Top", "Bottom", "Left", "Right"}) {
    for (const char* text : {"", "5", "-1a2 mm", "007", "999999999999999", "\uFF11"}) {
      const auto before = heap().allocations;
      view->type(box, text);
      EXPECT_EQ(heap().allocations - before, 0) << box << " after \"" << text << '"';
    }
    EXPECT_EQ(view->control(box).text, "0");
  }
}

TEST_F(Keystroke, AllocatesNothingWhereTheNumberIsClamped) {
  const auto& box = controller->textBoxMarginTop();
  box->setValueRange(number(5), platform::makeObject(50.5));
  for (const char* text : {"1", "99", "999999999999999"}) {
    const auto before = heap().allocations;
    view->type("Top", text);
    EXPECT_EQ(heap().allocations - before, 0) << text;
  }
  EXPECT_EQ(view->control("Top").text, "50.5");
}

TEST_F(Keystroke, AllocatesForFortyDigitsSoTheCounterWorks) {
  const auto before = heap().allocations;
  view->type("Top", std::string(40, '9'));
  EXPECT_GT(heap().allocations, before);
}

}  // namespace
}  // namespace tandemtrim::test
