#include <stdexcept>

#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TextChange : public ViewTest {
 protected:
  // A user's edit: sets the box's text and notifies its subscribers.
  void edit(RecordingTextBox& box, const std::string& text) {
    box.text = text;
    forget();
    for (const auto& subscription : center.subscriptions) {
      if (subscription.object == &box) subscription.selector({subscription.name, &box});
    }
  }
};

TEST_F(TextChange, CorrectsTheBoxAndThenShowsTheNumberInItsMarginsControls) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  edit(nib.margins[kTop].textBox, "007mm");
  EXPECT_THAT(log,
              ElementsAre("textBoxMarginTop text=7", "textBoxMarginTop text=7", "stepperMarginTop text=7"));
  edit(nib.margins[kRight].textBox, "12");
  EXPECT_THAT(log, ElementsAre("textBoxMarginRight text=10", "textBoxMarginRight text=10",
                               "stepperMarginRight text=10"));
}

TEST_F(TextChange, WritesALegalTextBackToo) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  edit(nib.margins[kLeft].textBox, "20");
  EXPECT_THAT(log, ElementsAre("textBoxMarginLeft text=20", "textBoxMarginLeft text=20",
                               "stepperMarginLeft text=20"));
}

TEST_F(TextChange, NeverTouchesThePrintSettings) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  edit(nib.margins[kTop].textBox, "9");
  EXPECT_THAT(settings().log, IsEmpty());
  EXPECT_TRUE(controller->saveNonPPDSettingsToPrintSettings());
  EXPECT_EQ(settings().values["MVTopMargin"], "9");
}

struct Edit {
  std::string typed;
  std::string left;
};

TEST_F(TextChange, LeavesANumberInTheRange) {
  const std::string nines(20, '9');
  const Edit edits[] = {{"", "5"},      {"abc", "5"}, {"4", "5"},    {"5", "5"},
                        {"50", "50"},   {"51", "50"}, {nines, "50"}, {"-7", "7"},
                        {"12.5", "50"}, {" 8", "8"},  {"1a2", "12"}, {"\uFF11", "5"}};
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>5</integer>";
  ASSERT_NO_FATAL_FAILURE(loadView());
  for (const auto& [typed, left] : edits) {
    edit(nib.margins[kTop].textBox, typed);
    EXPECT_EQ(nib.margins[kTop].textBox.text, left) << typed;
    EXPECT_EQ(nib.margins[kTop].stepper.text, left) << typed;
  }
}

// The bound's object itself is passed on, not a new number.
TEST_F(TextChange, PassesOnTheBoundsObject) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<real>2.5</real>";
  ASSERT_NO_FATAL_FAILURE(loadView());
  edit(nib.margins[kTop].textBox, "1");
  EXPECT_THAT(log, ElementsAre("textBoxMarginTop text=2.5", "textBoxMarginTop text=2.5",
                               "stepperMarginTop text=2.5"));
}

TEST_F(TextChange, OnlyCorrectsABoxThatIsNotAMarginBox) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  for (const char* identifier : {"", "top", "Valid", "MarginTop"}) {
    RecordingTextBox box("other", log);
    box.setIdentifier(identifier);
    box.setValueRange(number(0), number(50));
    box.text = "1x";
    log.clear();
    controller->controlTextDidChange({platform::NSControlTextDidChangeNotification, &box});
    EXPECT_THAT(log, ElementsAre("other text=1")) << identifier;
  }
}

TEST_F(TextChange, DoesNothingForNullOrAnObjectThatIsNotATextBox) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  forget();
  const std::initializer_list<platform::NibObject*> objects{nullptr, &nib.tandemTrimView,
                                                            &nib.margins[kTop].label,
                                                            &nib.margins[kTop].stepper, &nib.tandemTrimValid};
  for (auto* object : objects)
    controller->controlTextDidChange({platform::NSControlTextDidChangeNotification, object});
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TextChange, FindsTheTicketByTheIdentifierOfTheBox) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  nib.margins[kTop].textBox.setIdentifier("Right");
  edit(nib.margins[kTop].textBox, "9");
  EXPECT_THAT(
      log, ElementsAre("textBoxMarginTop text=9", "textBoxMarginRight text=9", "stepperMarginRight text=9"));
}

TEST_F(TextChange, UsesTheBoxsOwnRange) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  nib.margins[kTop].textBox.setValueRange(number(30), number(33));
  edit(nib.margins[kTop].textBox, "99");
  EXPECT_EQ(nib.margins[kTop].textBox.text, "33");
}

TEST_F(TextChange, RaisesForABoxWithoutTheBoundThatItNeeds) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  RecordingTextBox box("other", log);
  box.text = "7";
  EXPECT_THROW(controller->controlTextDidChange({platform::NSControlTextDidChangeNotification, &box}),
               std::invalid_argument);
  EXPECT_EQ(box.text, "7");
}

TEST_F(TextChange, IsNotCausedByTheProgramsOwnChanges) {
  scene.stored["MVTopMargin"] = "777";
  ASSERT_NO_FATAL_FAILURE(loadView());
  controller->restoreNonPPDSettingsFromPrintSettings();
  EXPECT_EQ(nib.margins[kTop].textBox.text, "777");
  edit(nib.margins[kTop].textBox, "7771");
  EXPECT_EQ(nib.margins[kTop].textBox.text, "50");
}

TEST_F(TextChange, FiltersWithTheRulesOfMarginEntry) {
  makeController();
  EXPECT_EQ(controller->TTVCDigitString(" -1a2\uFF13"), "12");
  EXPECT_EQ(controller->TTVCDigitString(""), "");
  for (const char* accepted : {"", "7", "12"}) EXPECT_TRUE(controller->TTVCIsDigitChar(accepted)) << accepted;
  for (const char* rejected : {"1a", " ", "-", "\u0661"}) {
    EXPECT_FALSE(controller->TTVCIsDigitChar(rejected)) << rejected;
  }
}

}  // namespace
}  // namespace tandemtrim::test
