#include <stdexcept>

#include "tests/model/ticket_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MarginTicket : public TicketTest<MorvaTTPrintTicketMarginKV2> {
 protected:
  RecordingTextBox box{"box", log};
  RecordingStepper stepper{"stepper", log};
};

TEST_F(MarginTicket, ShowsANumberInEveryControlAndStoresItAtTheNextSaveOnly) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box, &stepper});
  ticket->setMarginValue(*number(7));
  EXPECT_THAT(log, ElementsAre("box text=7", "stepper text=7"));
  EXPECT_THAT(settings().log, IsEmpty());
  ticket->saveTicket();
  EXPECT_THAT(settings().log, ElementsAre("set MVKey=7"));
}

TEST_F(MarginTicket, ShowsANumberInItsOwnDecimalText) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box});
  const std::pair<platform::Object, std::string> numbers[] = {
      {platform::Object(2.5), "2.5"}, {platform::Object(5.0), "5"}, {platform::Object(true), "1"}};
  for (const auto& [value, text] : numbers) {
    ticket->setMarginValue(value);
    EXPECT_EQ(box.text, text);
  }
}

TEST_F(MarginTicket, RefusesAnObjectWithoutDecimalText) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box});
  EXPECT_THROW(ticket->setMarginValue(platform::Object("7")), std::invalid_argument);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(MarginTicket, IgnoresANumberWithoutControls) {
  const auto ticket = makeTicket();
  ticket->setMarginValue(*number(7));
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
}

TEST_F(MarginTicket, NeverChecksOrClampsWhatItStoresOrShows) {
  scene.stored["MVKey"] = "99999";
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box, &stepper});
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "99999");
  EXPECT_THAT(log, ElementsAre("box text=99999", "stepper text=99999"));
  box.text = "no number";
  ticket->saveTicket();
  EXPECT_EQ(settings().values["MVKey"], "no number");
}

}  // namespace
}  // namespace tandemtrim::test
