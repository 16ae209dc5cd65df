#include "host/dialog/texts/texts.hpp"

#include <gmock/gmock.h>

#include "host/dialog/asking/message.hpp"

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;
using testing::ElementsAre;
using testing::IsEmpty;

IllegalValue illegalNumber() {
  PanelSetting margin;
  margin.title = "Left Margin";
  margin.kind = PanelSetting::Kind::number;
  margin.minimum = 2;
  margin.maximum = 15;
  margin.value = "18";
  return {margin, "15"};
}

IllegalValue illegalChoice() {
  PanelSetting position;
  position.title = "Position";
  position.kind = PanelSetting::Kind::choice;
  position.choices = {{"L", "Left"}, {"R", "Right"}};
  position.value = "Up\nside";
  return {position, "L"};
}

TEST(Problems, NameTheValueAndWhatThePrinterAllowsAndThenTheConflicts) {
  EXPECT_THAT(problemTexts({illegalNumber(), illegalChoice()}, {{"Trim", "On", "Glue", "Hot"}}),
              ElementsAre("Left Margin: this printer does not allow 18 (allowed: 2 to 15)",
                          "Position: this printer does not allow Up\uFFFDside (allowed: Left, Right)",
                          "Trim (On) cannot be combined with Glue (Hot) on this printer."));
  EXPECT_THAT(problemTexts({}, {}), IsEmpty());
}

TEST(TheTextOfAFailure, SaysWhatTheUserCanDoAndThenTheFact) {
  EXPECT_EQ(failureText(Failure(Trouble::stopped, "Morva is stopped", "; start it with cupsenable")),
            "The printer is stopped. Choose another printer, or have it started and try again.\n"
            "Morva is stopped");
  EXPECT_EQ(failureText(Failure(Trouble::userMessage, "Choose all pages.")), "Choose all pages.");
}

TEST(TheTextsOfFailures, AreSeparateParagraphs) {
  const Failure one(Trouble::userMessage, "One.");
  const Failure other(Trouble::userMessage, "Other.");
  EXPECT_EQ(failuresText({one}), "One.");
  EXPECT_EQ(failuresText({one, other}), "One.\n\nOther.");
}

// A message's heading, and the lines below it.
struct Split {
  std::string text;
  std::string heading;
  std::string below;
};

class AMessage : public testing::TestWithParam<Split> {};

TEST_P(AMessage, HasItsFirstLineAsItsHeadingAndShowsTheRestBelow) {
  const auto message = messageOf(GetParam().text);
  EXPECT_EQ(message.heading, GetParam().heading);
  EXPECT_EQ(linesOf(message), GetParam().below);
}

const std::string kLongest(200, 'x');

INSTANTIATE_TEST_SUITE_P(Texts, AMessage,
                         testing::Values(Split{"Stopped.", "Stopped.", ""},
                                         Split{"Stopped.\nStart it.", "Stopped.", "Start it."},
                                         Split{"One.\n\nTwo.\nThree.", "One.", "Two.\nThree."},
                                         Split{"One.\n", "One.", ""}, Split{"", "", ""},
                                         Split{kLongest + "\nTwo.", kLongest, "Two."},
                                         Split{kLongest + 'x', kLongest + 'x', kLongest + 'x'},
                                         Split{kLongest + "x\nTwo.", kLongest + 'x', kLongest + "x\nTwo."}));

TEST(AMessage, HasEachSentenceInALine) { EXPECT_EQ(linesOf({"Heading", {"One.", "Two."}}), "One.\nTwo."); }

}  // namespace
}  // namespace tandemtrim::host
