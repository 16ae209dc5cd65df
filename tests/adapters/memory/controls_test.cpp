#include "adapters/memory/controls.hpp"

#include <gmock/gmock.h>

#include "adapters/shared/notification_center.hpp"

namespace tandemtrim::platform::memory {
namespace {

using testing::ElementsAre;

// Records the text of a box at each notification of an edit.
class EditsOf {
 public:
  explicit EditsOf(TextBox& box) {
    notificationCenter().addObserver(
        this,
        [this](const Notification& edit) {
          texts.push_back(dynamic_cast<TextBox*>(edit.object)->stringValue());
        },
        NSControlTextDidChangeNotification, &box);
  }
  ~EditsOf() { notificationCenter().removeObserver(this); }
  EditsOf(const EditsOf&) = delete;
  EditsOf& operator=(const EditsOf&) = delete;

  std::vector<std::string> texts;
};

TEST(Label, ShowsItsTextInItsColor) {
  TextLabel label;
  EXPECT_EQ(label.textColor(), Color::blackColor);
  label.setStringValue("Top:");
  label.setTextColor(Color::lightGrayColor);
  EXPECT_EQ(label.stringValue(), "Top:");
  EXPECT_EQ(label.textColor(), Color::lightGrayColor);
}

TEST(TextBox, ReportsAnEditByTheUserAtOnce) {
  TextBox box;
  const EditsOf edits(box);
  EXPECT_TRUE(box.userEdits("1"));
  EXPECT_TRUE(box.userEdits("1"));
  EXPECT_THAT(edits.texts, ElementsAre("1", "1"));
}

TEST(TextBox, ReportsNoChangeByTheProgram) {
  TextBox box;
  const EditsOf edits(box);
  box.setStringValue("5");
  box.setIdentifier("Top");
  box.setValueRange(makeObject(std::int64_t{0}), makeObject(std::int64_t{3}));
  EXPECT_EQ(box.stringValue(), "5");
  EXPECT_EQ(box.identifier(), "Top");
  EXPECT_THAT(edits.texts, testing::IsEmpty());
}

TEST(TextBox, IgnoresTheUserWhileItIsDisabled) {
  TextBox box;
  const EditsOf edits(box);
  box.setStringValue("5");
  box.setEnabled(false);
  EXPECT_FALSE(box.userEdits("7"));
  EXPECT_EQ(box.stringValue(), "5");
  box.setEnabled(true);
  EXPECT_TRUE(box.userEdits("7"));
  EXPECT_THAT(edits.texts, ElementsAre("7"));
}

class StepperTest : public testing::Test {
 protected:
  StepperTest() {
    stepper.setTextBox(&box);
    stepper.setMinValue(2);
    stepper.setMaxValue(5);
  }
  void expectAfter(int clicks, const std::string& text) {
    EXPECT_TRUE(stepper.userClicks(clicks));
    EXPECT_EQ(stepper.stringValue(), text);
    EXPECT_EQ(box.stringValue(), text);
  }
  TextBox box;
  Stepper stepper;
};

TEST_F(StepperTest, MovesByOneOnEachClickAndShowsItsValueInItsBox) {
  stepper.setStringValue("3");
  expectAfter(1, "4");
  expectAfter(-2, "2");
}

TEST_F(StepperTest, StopsAtItsBoundsWithoutWrapping) {
  stepper.setStringValue("5");
  expectAfter(1, "5");
  expectAfter(-7, "2");
  expectAfter(-1, "2");
  expectAfter(100, "5");
}

TEST_F(StepperTest, GoesToTheNearerBoundFromAValueThatTheProgramPutOutside) {
  stepper.setStringValue("777");
  EXPECT_EQ(stepper.stringValue(), "777");
  expectAfter(-1, "5");
  stepper.setStringValue("-3");
  expectAfter(1, "2");
}

TEST_F(StepperTest, TakesTheIntegerValueOfAText) {
  for (const auto& [text, value] : {std::pair{"", "0"}, {"abc", "0"}, {"2.5", "2"}, {"12mm", "12"}}) {
    stepper.setStringValue(text);
    EXPECT_EQ(stepper.stringValue(), value) << text;
  }
}

TEST_F(StepperTest, LeavesTheBoxAloneWhenTheProgramSetsItsValue) {
  box.setStringValue("4");
  stepper.setStringValue("3");
  EXPECT_EQ(box.stringValue(), "4");
}

// A click on the stepper is not an edit of the box, so the box is not corrected.
TEST_F(StepperTest, ReportsNoEditOfItsBox) {
  const EditsOf edits(box);
  stepper.userClicks(1);
  EXPECT_EQ(box.stringValue(), "2");
  EXPECT_THAT(edits.texts, testing::IsEmpty());
}

TEST_F(StepperTest, IgnoresTheUserWhileItIsDisabled) {
  stepper.setStringValue("3");
  stepper.setEnabled(false);
  EXPECT_FALSE(stepper.userClicks(1));
  EXPECT_EQ(stepper.stringValue(), "3");
}

TEST_F(StepperTest, WorksWithoutABox) {
  Stepper alone;
  EXPECT_TRUE(alone.userClicks(3));
  EXPECT_EQ(alone.stringValue(), "3");
}

}  // namespace
}  // namespace tandemtrim::platform::memory
