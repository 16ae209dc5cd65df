#include <stdexcept>

#include "tests/model/ticket_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ValidTicket : public TicketTest<MorvaTTPrintTicketValidKV2> {
 protected:
  RecordingCheckBox first{"first", log};
  RecordingCheckBox second{"second", log};
};

TEST_F(ValidTicket, SavesOnForTheOnStateOfTheFirstCheckBoxAndOffForEveryOther) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first, &second});
  second.current = 1;
  for (const int state : {0, -1, 2}) {
    first.current = state;
    ticket->saveTicket();
    EXPECT_EQ(settings().values["MVKey"], "Off") << state;
  }
  first.current = 1;
  second.current = 0;
  ticket->saveTicket();
  EXPECT_EQ(settings().values["MVKey"], "On");
}

TEST_F(ValidTicket, ShowsOnlyExactlyOnAsOnAndReturnsTheStoredValueUnchanged) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first, &second});
  settings().values["MVKey"] = "On";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "On");
  EXPECT_THAT(log, ElementsAre("first state=1", "second state=1"));
  for (const char* value : {"on", "ON", "1", "On ", "", "Off", "perhaps"}) {
    log.clear();
    settings().values["MVKey"] = value;
    EXPECT_EQ(ticket->restoreTicketFailSafe(), value);
    EXPECT_THAT(log, ElementsAre("first state=0", "second state=0")) << value;
  }
}

TEST_F(ValidTicket, RestoresItsDefaultWithoutStoringIt) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  settings().values.clear();
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
  EXPECT_EQ(first.current, 0);
  EXPECT_THAT(settings().values, IsEmpty());
}

TEST_F(ValidTicket, CaptionsEveryCheckBoxInOrder) {
  const auto ticket = makeTicket();
  ticket->setTitle("nobody there");
  ticket->registerTargetInstances({&first, &second});
  ticket->setTitle("Trim It");
  EXPECT_THAT(log, ElementsAre("first title=Trim It", "second title=Trim It"));
}

TEST_F(ValidTicket, SavesNothingWithoutACheckBoxAndStillReturnsItsValue) {
  const auto ticket = makeTicket();
  settings().values["MVKey"] = "On";
  ticket->saveTicket();
  EXPECT_THAT(settings().log, IsEmpty());
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "On");
}

TEST_F(ValidTicket, ResetsAsPlainText) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  ticket->setToDefault();
  EXPECT_THAT(log, ElementsAre("first text=fallback"));
}

TEST_F(ValidTicket, RefusesAControlThatIsNotACheckBox) {
  const auto ticket = makeTicket();
  RecordingTextBox box("box", log);
  ticket->registerTargetInstances({&box});
  EXPECT_THROW(ticket->saveTicket(), std::invalid_argument);
  EXPECT_THROW(ticket->restoreTicketFailSafe(), std::invalid_argument);
  EXPECT_THROW(ticket->setTitle("Trim It"), std::invalid_argument);
  EXPECT_EQ(settings().values["MVKey"], "fallback");
}

}  // namespace
}  // namespace tandemtrim::test
