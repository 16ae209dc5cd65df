#include "tests/model/manager_test.hpp"
#include "tests/support/recording/controls.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Manager : public CoreTest {
 protected:
  Manager() {
    scene.strings.clear();
    manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
    settings().log.clear();
  }

  void registerAll() {
    manager->registerTargetInstances({&valid}, "Valid");
    manager->registerTargetInstances({&direction}, "Direction");
    manager->registerTargetInstances({&position}, "Position");
    for (std::size_t side = 0; side < 4; ++side) {
      manager->registerTargetInstances({&boxes.at(side), &steppers.at(side)},
                                       kSettings.at(side + 3).ticketName);
    }
  }

  Log log;
  RecordingCheckBox valid{"valid", log};
  RecordingPopUp direction{"direction", log, 0};
  RecordingPopUp position{"position", log, 0};
  std::array<RecordingTextBox, 4> boxes{{{"top", log}, {"bottom", log}, {"left", log}, {"right", log}}};
  std::array<RecordingStepper, 4> steppers{
      {{"top stepper", log}, {"bottom stepper", log}, {"left stepper", log}, {"right stepper", log}}};
  std::unique_ptr<MorvaTTPrintTicketManagerKV2> manager;
};

TEST_F(Manager, RegistersControlsWithTheNamedTicketOnly) {
  for (const auto& setting : kSettings) {
    manager->registerTargetInstances({&valid, &direction}, setting.ticketName);
    for (auto* ticket : ticketsOf(*manager)) {
      EXPECT_EQ(ticket->targetInstances().size(), ticket->key() == setting.key ? 2U : 0U);
    }
    manager->registerTargetInstances({}, setting.ticketName);
  }
}

TEST_F(Manager, RestoresAllTicketsInOrder) {
  registerAll();
  manager->restoreAllTicketFailSafe();
  EXPECT_THAT(log, ElementsAre("valid state=0", "direction selected=LongEdgeFeed", "position selected=Center",
                               "top text=5", "top stepper text=5", "bottom text=6", "bottom stepper text=6",
                               "left text=7", "left stepper text=7", "right text=8", "right stepper text=8"));
}

TEST_F(Manager, SavesAllTicketsInOrderEvenWhereWritesFail) {
  registerAll();
  settings().writeStatus = -1;
  manager->saveAllTicket();
  EXPECT_THAT(settings().log, ElementsAre("set MVTandemTrim=Off", "remove MVImageDirectionPriority",
                                          "remove MVPrintPosition", "set MVTopMargin=", "set MVBottomMargin=",
                                          "set MVLeftMargin=", "set MVRightMargin="));
}

TEST_F(Manager, ResetsAllButTheOnOffSettingInOrderAndInTheControlsOnly) {
  registerAll();
  valid.current = 1;
  settings().values["MVTandemTrim"] = "On";
  manager->setAllToDefaultExceptValid();
  EXPECT_THAT(log, ElementsAre("direction selected=LongEdgeFeed", "position selected=Center", "top text=5",
                               "top stepper text=5", "bottom text=6", "bottom stepper text=6", "left text=7",
                               "left stepper text=7", "right text=8", "right stepper text=8"));
  EXPECT_EQ(valid.current, 1);
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Manager, HasNothingToSaveOrShowBeforeControlsAreRegistered) {
  manager->saveAllTicket();
  manager->setAllToDefaultExceptValid();
  manager->setTitleToValid("Trim It");
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Manager, ReadsOneSettingByItsTicketNameAndShowsIt) {
  for (const auto& setting : kSettings) {
    EXPECT_EQ(manager->restoreTicketFailSafe(setting.ticketName), setting.defaultText);
  }
  registerAll();
  settings().values["MVTandemTrim"] = "On";
  EXPECT_EQ(manager->restoreTicketFailSafe("Valid"), "On");
  EXPECT_THAT(log, ElementsAre("valid state=1"));
}

TEST_F(Manager, IgnoresNamesThatNoTicketHas) {
  registerAll();
  for (const char* name : {"MarginTop", "top", "ImageDirection", "", "Top "}) {
    EXPECT_EQ(manager->restoreTicketFailSafe(name), std::nullopt) << name;
    manager->registerTargetInstances({}, name);
    manager->setMarginValue(*number(9), name);
  }
  EXPECT_THAT(log, IsEmpty());
  manager->restoreAllTicketFailSafe();
  EXPECT_EQ(log.size(), 11U);
}

TEST_F(Manager, CaptionsTheCheckBox) {
  registerAll();
  manager->setTitleToValid("Trim It");
  EXPECT_THAT(log, ElementsAre("valid title=Trim It"));
}

TEST_F(Manager, ShowsAMarginInTheControlsOfItsSideOnly) {
  registerAll();
  for (std::size_t side = 0; side < 4; ++side) {
    log.clear();
    manager->setMarginValue(*number(9), kSettings.at(side + 3).ticketName);
    const std::string name = std::array{"top", "bottom", "left", "right"}.at(side);
    EXPECT_THAT(log, ElementsAre(name + " text=9", name + " stepper text=9"));
  }
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Manager, ShowsNoMarginInASettingThatIsNotAMargin) {
  registerAll();
  for (const char* name : {"Valid", "Direction", "Position"}) manager->setMarginValue(*number(9), name);
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::test
