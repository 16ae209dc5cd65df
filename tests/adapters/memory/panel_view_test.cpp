#include <stdexcept>

#include "adapters/linux/print_settings.hpp"
#include "tests/adapters/memory/memory_test.hpp"

namespace tandemtrim::test {
namespace {

using platform::memory::ControlKind;
using testing::IsEmpty;

class MemoryView : public MemoryTest {
 protected:
  void SetUp() override { ASSERT_NO_FATAL_FAILURE(showOn()); }
  [[nodiscard]] std::string text(std::string_view name) const { return view->control(name).text; }
};

TEST_F(MemoryView, ListsItsControlsFromTopToBottom) {
  std::vector<std::string_view> outlets;
  for (const auto& control : view->controls()) outlets.push_back(control.outlet);
  EXPECT_THAT(outlets,
              testing::ElementsAre("tandemTrimValid", "labelDirection", "directionPopUp", "labelPosition",
                                   "positionPopUp", "labelMarginTop", "textBoxMarginTop", "stepperMarginTop",
                                   "labelMarginLimitTop", "labelMarginBottom", "textBoxMarginBottom",
                                   "stepperMarginBottom", "labelMarginLimitBottom", "labelMarginLeft",
                                   "textBoxMarginLeft", "stepperMarginLeft", "labelMarginLimitLeft",
                                   "labelMarginRight", "textBoxMarginRight", "stepperMarginRight",
                                   "labelMarginLimitRight", "defaultButton"));
}

TEST_F(MemoryView, ShowsEachControlUnderItsOutletAndItsName) {
  const std::pair<const char*, const char*> names[] = {
      {"tandemTrimValid", "Valid"},    {"directionPopUp", "Direction"},    {"positionPopUp", "Position"},
      {"textBoxMarginTop", "Top"},     {"textBoxMarginBottom", "Bottom"},  {"textBoxMarginLeft", "Left"},
      {"textBoxMarginRight", "Right"}, {"defaultButton", "RestoreDefault"}};
  for (const auto& [outlet, name] : names) {
    EXPECT_EQ(view->control(outlet).name, name);
    EXPECT_EQ(view->control(name).outlet, outlet);
  }
  EXPECT_THAT(view->control("stepperMarginTop").name, IsEmpty());
  EXPECT_THAT(view->control("labelMarginTop").name, IsEmpty());
}

TEST_F(MemoryView, ShowsWhatAUserSeesOfEachKindOfControl) {
  const auto check = view->control("Valid");
  EXPECT_EQ(check.kind, ControlKind::checkBox);
  EXPECT_EQ(check.text, "Trim It");
  EXPECT_EQ(check.state, platform::CheckBox::kOn);
  const auto menu = view->control("Position");
  EXPECT_EQ(menu.kind, ControlKind::popUp);
  EXPECT_EQ(menu.text, "Midships");
  EXPECT_EQ(menu.selected, 1U);
  EXPECT_EQ(menu.choices.at(2).title, "Starboard");
  EXPECT_EQ(menu.choices.at(2).value, "Right");
  const auto label = view->control("labelMarginTop");
  EXPECT_EQ(label.kind, ControlKind::label);
  EXPECT_EQ(label.text, "Above:");
  EXPECT_EQ(label.color, platform::Color::blackColor);
  const auto button = view->control("RestoreDefault");
  EXPECT_EQ(button.kind, ControlKind::button);
  EXPECT_EQ(button.text, "As It Was");
  for (const auto& [outlet, kind] : {std::pair{"textBoxMarginTop", ControlKind::textBox},
                                     std::pair{"stepperMarginTop", ControlKind::stepper}}) {
    const auto control = view->control(outlet);
    EXPECT_EQ(control.kind, kind);
    EXPECT_EQ(control.text, "5");
    EXPECT_EQ(control.min, 0);
    EXPECT_EQ(control.max, 50);
  }
}

TEST_F(MemoryView, SavesAnUneditedTextByteForByte) {
  platform::linux::PrintSettings job;
  callback->current = &job;
  const std::string texts[] = {"",
                               " 5 mm\r\n",
                               "not UTF-8: \xFF\xE4\x80",
                               "half a pair: \xED\xA0\xBD",
                               "a pair in halves: \xED\xA0\xBD\xED\xB8\x80",
                               "too long a form: \xC0\xAF",
                               std::string("a\0b", 3),
                               "\xEF\xBB\xBF"
                               "7"};
  for (const auto& text : texts) {
    for (const char* key : {"MVTopMargin", "MVRightMargin"}) job.PMPrintSettingsSetValue(key, text, false);
    controller->restoreNonPPDSettingsFromPrintSettings();
    EXPECT_EQ(view->control("Top").text, text);
    view->type("Left", "3");
    controller->saveNonPPDSettingsToPrintSettings();
    for (const char* key : {"MVTopMargin", "MVRightMargin"}) {
      std::optional<std::string> stored;
      job.PMPrintSettingsGetValue(key, stored);
      EXPECT_EQ(stored, text) << key;
    }
  }
}

TEST_F(MemoryView, RefusesNamesOfMissingOrUnsuitableControls) {
  for (const char* name : {"", "top", "Nowhere", "tandemTrimView"}) {
    EXPECT_THROW((void)view->control(name), std::out_of_range) << name;
    EXPECT_THROW(view->type(name, "1"), std::out_of_range) << name;
    EXPECT_THROW(view->click(name), std::out_of_range) << name;
  }
  EXPECT_THROW(view->type("Valid", "1"), std::out_of_range);
  EXPECT_THROW(view->append("stepperMarginTop", "1"), std::out_of_range);
  EXPECT_THROW(view->backspace("labelMarginTop"), std::out_of_range);
  EXPECT_THROW(view->click("Top"), std::out_of_range);
  EXPECT_THROW(view->step("Top", 1), std::out_of_range);
  EXPECT_THROW(view->choose("Valid", 0), std::out_of_range);
  EXPECT_THROW(view->choose("Position", 3), std::out_of_range);
  EXPECT_THROW(view->setMixed("RestoreDefault"), std::out_of_range);
}

TEST_F(MemoryView, TypesAWholeTextAsOneEdit) {
  EXPECT_TRUE(view->type("Top", "1a2"));
  EXPECT_EQ(text("Top"), "12");
  EXPECT_EQ(text("stepperMarginTop"), "12");
}

TEST_F(MemoryView, AppendsAtTheEndOfABoxsText) {
  view->type("Top", "1");
  EXPECT_TRUE(view->append("Top", "2"));
  EXPECT_EQ(text("Top"), "12");
}

// A box that nobody corrects, so that it shows its text as edited.
class FreeBox : public testing::Test {
 protected:
  struct Owner : platform::NibOwner {
    [[nodiscard]] std::vector<std::string_view> outletNames() const override { return {}; }
    void setOutlet(std::string_view name, platform::NibObject* object) override {
      if (name == "textBoxMarginTop") box = object;
    }
    void performAction(std::string_view, platform::NibObject*) override {}
    platform::NibObject* box = nullptr;
  };
  FreeBox() { panel.connectOutlets(owner); }

  Owner owner;
  platform::memory::Panel panel{platform::memory::NibDescription(), owner};
};

TEST_F(FreeBox, LosesItsLastCharacterAsAWhole) {
  const std::pair<const char*, const char*> texts[] = {
      {"12", "1"}, {"1\u00E4", "1"}, {"\uFF11", ""}, {"7\U0001D7CF", "7"}, {"\x80\x80", ""}, {"1\xFF", "1"}};
  for (const auto& [before, after] : texts) {
    panel.type("Top", before);
    EXPECT_TRUE(panel.backspace("Top"));
    EXPECT_EQ(panel.control("Top").text, after);
  }
}

TEST_F(FreeBox, ReportsNoEditByBackspaceWhenItIsEmpty) {
  EXPECT_TRUE(panel.type("Top", ""));
  int edits = 0;
  auto& center = platform::memory::notificationCenter();
  center.addObserver(
      &edits, [&](const auto&) { ++edits; }, platform::NSControlTextDidChangeNotification, owner.box);
  EXPECT_TRUE(panel.backspace("Top"));
  EXPECT_EQ(edits, 0);
  EXPECT_TRUE(panel.append("Top", "1"));
  EXPECT_TRUE(panel.backspace("Top"));
  EXPECT_EQ(edits, 2);
  center.removeObserver(&edits);
}

TEST_F(MemoryView, ShowsStepsInTheBoxAndSavesThem) {
  view->type("Top", "49");
  EXPECT_TRUE(view->step("stepperMarginTop", 3));
  EXPECT_EQ(text("Top"), "50");
  EXPECT_TRUE(view->step("stepperMarginTop", -2));
  EXPECT_EQ(text("Top"), "48");
  controller->saveNonPPDSettingsToPrintSettings();
  EXPECT_EQ(settings().values["MVTopMargin"], "48");
}

TEST_F(MemoryView, RefusesEveryActOnAGreyedControl) {
  EXPECT_TRUE(view->click("Valid"));
  EXPECT_FALSE(view->type("Top", "9"));
  EXPECT_FALSE(view->append("Top", "9"));
  EXPECT_FALSE(view->backspace("Top"));
  EXPECT_FALSE(view->step("stepperMarginTop", 1));
  EXPECT_FALSE(view->choose("Position", 0));
  EXPECT_FALSE(view->click("RestoreDefault"));
  EXPECT_EQ(text("Top"), "5");
  EXPECT_EQ(text("Position"), "Midships");
  EXPECT_TRUE(view->click("Valid"));
  EXPECT_TRUE(view->choose("Position", 0));
  EXPECT_EQ(text("Position"), "Port");
  EXPECT_TRUE(view->click("RestoreDefault"));
  EXPECT_EQ(text("Position"), "Midships");
}

TEST_F(MemoryView, SwitchesOnFromMixed) {
  view->setMixed("Valid");
  EXPECT_EQ(view->control("Valid").state, platform::CheckBox::kMixed);
  controller->updateView();
  EXPECT_FALSE(view->control("Top").enabled);
  view->click("tandemTrimValid");
  EXPECT_EQ(view->control("Valid").state, platform::CheckBox::kOn);
  EXPECT_TRUE(view->control("Top").enabled);
}

TEST_F(MemoryView, HasNoViewOfAToolkit) { EXPECT_EQ(view->toolkitView(), nullptr); }

TEST_F(MemoryView, ShowsAMenuWithoutASelectionAsEmpty) {
  settings().values["MVPrintPosition"] = "Nowhere";
  controller->restoreNonPPDSettingsFromPrintSettings();
  EXPECT_EQ(view->control("Position").selected, std::nullopt);
  EXPECT_THAT(text("Position"), IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::test
