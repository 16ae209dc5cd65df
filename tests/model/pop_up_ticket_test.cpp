#include <stdexcept>

#include "tests/model/ticket_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PopUpTicket : public TicketTest<MorvaTTPrintTicketPopUpKV2> {
 protected:
  PopUpTicket() { scene.strings = {{"stored", "Gespeichert"}, {"fallback", "Vorgabe"}}; }

  RecordingPopUp first{"first", log, 2};
  RecordingPopUp second{"second", log, 2};
};

TEST_F(PopUpTicket, SelectsTheLocalizedTitleOfTheStoredValueInEveryMenu) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first, &second});
  settings().values["MVKey"] = "stored";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "stored");
  EXPECT_THAT(log, ElementsAre("first selected=Gespeichert", "second selected=Gespeichert"));
  EXPECT_THAT(settings().log, ElementsAre("get MVKey"));
}

TEST_F(PopUpTicket, TriesToSelectAValueThatNoItemHasAndReturnsItUnchanged) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  settings().values["MVKey"] = "nowhere";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "nowhere");
  EXPECT_THAT(log, ElementsAre("first selected=nowhere"));
  EXPECT_EQ(settings().values["MVKey"], "nowhere");
}

TEST_F(PopUpTicket, RestoresItsDefaultWithoutStoringIt) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  settings().values.clear();
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
  EXPECT_THAT(log, ElementsAre("first selected=Vorgabe"));
  EXPECT_THAT(settings().values, IsEmpty());
}

TEST_F(PopUpTicket, ResetsToTheLocalizedTitleOfItsDefault) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first, &second});
  ticket->setToDefault();
  EXPECT_THAT(log, ElementsAre("first selected=Vorgabe", "second selected=Vorgabe"));
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(PopUpTicket, SavesTheValueBehindTheFirstMenusSelectedItem) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first, &second});
  first.items[1].value = "name";
  first.selected = 1;
  second.items[0].value = "other";
  second.selected = 0;
  ticket->saveTicket();
  EXPECT_THAT(settings().log, ElementsAre("set MVKey=name"));
}

TEST_F(PopUpTicket, RemovesItsValueWhenNothingIsSelected) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  ticket->saveTicket();
  EXPECT_THAT(settings().log, ElementsAre("remove MVKey"));
}

TEST_F(PopUpTicket, RemovesItsValueWhenTheSelectedItemHasNoValue) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&first});
  first.selected = 0;
  ticket->saveTicket();
  EXPECT_THAT(settings().log, ElementsAre("remove MVKey"));
}

TEST_F(PopUpTicket, SavesNothingWithoutAMenuAndStillReturnsItsValue) {
  const auto ticket = makeTicket();
  settings().values["MVKey"] = "stored";
  ticket->saveTicket();
  ticket->setToDefault();
  EXPECT_THAT(settings().log, IsEmpty());
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "stored");
}

TEST_F(PopUpTicket, RefusesAControlThatIsNotAMenu) {
  const auto ticket = makeTicket();
  RecordingTextBox box("box", log);
  ticket->registerTargetInstances({&box});
  EXPECT_THROW(ticket->saveTicket(), std::invalid_argument);
  EXPECT_THROW(ticket->restoreTicketFailSafe(), std::invalid_argument);
  EXPECT_THROW(ticket->setToDefault(), std::invalid_argument);
}

}  // namespace
}  // namespace tandemtrim::test
