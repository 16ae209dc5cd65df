#include <functional>

#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

struct HostCall {
  const char* name;
  std::function<void(Panel&)> make;
  /// Whether the call shows the stored values again.
  bool restores = false;
};

class EachHostCall : public Conformance, public testing::WithParamInterface<HostCall> {};

// The host calls before the toolkit handles any other event.
TEST_P(EachHostCall, SeesTheCorrectionOfATextThatWasJustTyped) {
  for (const auto& side : kSides) {
    ASSERT_NO_FATAL_FAILURE(showOn());
    ASSERT_TRUE(panel->replaceTextAtOnce(side.textBox, "1a0"));
    GetParam().make(*panel);
    const auto expected = GetParam().restores ? side.defaultText : "10";
    EXPECT_EQ(text(side.textBox), expected) << side;
    EXPECT_EQ(text(side.stepper), expected) << side;
    panel->save();
    EXPECT_EQ(dialog->stored(side.key), expected) << side;
    panel.reset();
  }
}

const HostCall kHostCalls[] = {
    {"panelName", [](auto& panel) { (void)panel.panelName(); }},
    {"panelKind", [](auto& panel) { (void)panel.panelKind(); }},
    {"panelView", [](auto& panel) { (void)panel.panelView(); }},
    {"summaryInfo", [](auto& panel) { (void)panel.summaryInfo(); }, true},
    {"willShow", [](auto& panel) { panel.willShow(); }, true},
    {"shouldHide", [](auto& panel) { (void)panel.shouldHide(); }},
    {"shouldShowHelp", [](auto& panel) { (void)panel.shouldShowHelp(); }},
    {"supportedPPDOptionKeys", [](auto& panel) { (void)panel.supportedPPDOptionKeys(); }},
    {"shouldPrint", [](auto& panel) { (void)panel.shouldPrint(); }},
    {"save", [](auto& panel) { panel.save(); }},
    {"restore", [](auto& panel) { panel.restore(); }, true},
};

std::string callName(const testing::TestParamInfo<HostCall>& call) { return call.param.name; }

INSTANTIATE_TEST_SUITE_P(Calls, EachHostCall, testing::ValuesIn(kHostCalls), callName);

// This summary restores no margin.
TEST_F(Conformance, SummaryWhileTheFunctionIsOffSeesTheCorrectionOfATextThatWasJustTyped) {
  ASSERT_NO_FATAL_FAILURE(show());
  panel->click("tandemTrimValid");
  ASSERT_TRUE(panel->replaceTextAtOnce("textBoxMarginTop", "1a0"));
  EXPECT_EQ(panel->summaryInfo().rows.size(), 1U);
  EXPECT_EQ(text("textBoxMarginTop"), "10");
}

}  // namespace
}  // namespace tandemtrim::conformance
