#include "tests/model/ticket_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class PrintTicket : public TicketTest<MorvaTTPrintTicketKV2> {
 protected:
  RecordingTextBox box{"box", log};
  RecordingStepper stepper{"stepper", log};
};

TEST_F(PrintTicket, IsNotMadeAndReadsAndWritesNothingWhenAnArgumentIsMissing) {
  const auto info = makeCommonInfo();
  EXPECT_THAT(MorvaTTPrintTicketKV2::initWithDefaultValue(std::nullopt, "MVKey", info), IsNull());
  EXPECT_THAT(MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", std::nullopt, info), IsNull());
  EXPECT_THAT(MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", nullptr), IsNull());
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(PrintTicket, StoresItsDefaultUnlockedAtOnceWhenItsKeyIsAbsent) {
  const auto info = makeCommonInfo();
  const auto ticket = MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", info);
  ASSERT_THAT(ticket, NotNull());
  EXPECT_THAT(settings().log, ElementsAre("get MVKey", "set MVKey=fallback"));
  EXPECT_EQ(ticket->key(), "MVKey");
  EXPECT_EQ(ticket->defaultValue(), "fallback");
  EXPECT_EQ(ticket->commonInfo(), info);
  EXPECT_THAT(ticket->targetInstances(), IsEmpty());
}

TEST_F(PrintTicket, KeepsAnyExistingValue) {
  for (const char* value : {"stored", "", "no choice of this setting"}) {
    scene.stored["MVKey"] = value;
    const auto info = makeCommonInfo();
    EXPECT_THAT(MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", info), NotNull());
    EXPECT_THAT(settings().log, ElementsAre("get MVKey"));
  }
}

TEST_F(PrintTicket, CountsAFailedReadAsNothingStored) {
  scene.stored["MVKey"] = "stored";
  const auto info = makeCommonInfo();
  settings().readStatus = -1;
  const auto ticket = MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", info);
  EXPECT_THAT(settings().log, ElementsAre("get MVKey", "set MVKey=fallback"));
  EXPECT_EQ(ticket->TTPTPrintSettings("MVKey"), std::nullopt);
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
}

TEST_F(PrintTicket, IsMadeEvenWhenItsDefaultCannotBeStored) {
  const auto info = makeCommonInfo();
  settings().writeStatus = -1;
  const auto ticket = MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", info);
  ASSERT_THAT(ticket, NotNull());
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
}

// Records the last use of the print settings before each call of isReady().
class NeverReady : public MorvaTTCommonInfoKV2 {
 public:
  using MorvaTTCommonInfoKV2::initialize;
  [[nodiscard]] bool isReady() const override {
    const auto& job = static_cast<FakePrintSettings&>(*currentPrintSettings());
    lastUses.emplace_back(job.log.empty() ? "too early" : job.log.back());
    return false;
  }
  mutable Log lastUses;
};

TEST_F(PrintTicket, StoresItsDefaultBeforeItRefusesCommonInfoThatIsNotReady) {
  const auto info = makeCommonInfoOf<NeverReady>();
  EXPECT_THAT(MorvaTTPrintTicketKV2::initWithDefaultValue("fallback", "MVKey", info), IsNull());
  EXPECT_THAT(info->lastUses, ElementsAre("set MVKey=fallback"));
  EXPECT_EQ(settings().values["MVKey"], "fallback");
  EXPECT_EQ(info.use_count(), 1);
}

TEST_F(PrintTicket, KeepsTheCommonInfoAliveAsLongAsItLives) {
  auto ticket = makeTicket();
  EXPECT_EQ(commonInfo.use_count(), 2);
  ticket.reset();
  EXPECT_EQ(commonInfo.use_count(), 1);
}

TEST_F(PrintTicket, ReturnsWhetherThePrintSettingsAcceptedAValue) {
  const auto ticket = makeTicket();
  EXPECT_TRUE(ticket->TTPTSetPrintSettings("Other", "value"));
  EXPECT_EQ(ticket->TTPTPrintSettings("Other"), "value");
  EXPECT_TRUE(ticket->TTPTSetPrintSettings("Other", std::nullopt));
  EXPECT_EQ(ticket->TTPTPrintSettings("Other"), std::nullopt);
  settings().writeStatus = -50;
  EXPECT_FALSE(ticket->TTPTSetPrintSettings("Other", "value"));
}

TEST_F(PrintTicket, RequestsThePrintSettingsFromTheHostEachTime) {
  const auto ticket = makeTicket();
  FakePrintSettings other;
  other.values["MVKey"] = "elsewhere";
  callback->current = &other;
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "elsewhere");
  callback->current = nullptr;
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
  EXPECT_FALSE(ticket->TTPTSetPrintSettings("MVKey", "value"));
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(PrintTicket, WritesNothingWithoutControlsAndStillReturnsItsValue) {
  const auto ticket = makeTicket();
  settings().values["MVKey"] = "stored";
  ticket->saveTicket();
  ticket->setToDefault();
  EXPECT_THAT(settings().log, IsEmpty());
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "stored");
}

TEST_F(PrintTicket, RestoresEveryControlInOrderWithoutWriting) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box, &stepper});
  settings().values["MVKey"] = "stored";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "stored");
  EXPECT_THAT(log, ElementsAre("box text=stored", "stepper text=stored"));
  EXPECT_THAT(settings().log, ElementsAre("get MVKey"));
}

TEST_F(PrintTicket, RestoresItsDefaultWhenItsKeyIsGoneWithoutStoringIt) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box});
  settings().values.clear();
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "fallback");
  EXPECT_EQ(box.text, "fallback");
  EXPECT_THAT(settings().values, IsEmpty());
}

TEST_F(PrintTicket, RestoresAnEmptyStoredTextAsItIs) {
  const auto ticket = makeTicket();
  settings().values["MVKey"] = "";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "");
}

TEST_F(PrintTicket, ResetsEveryControlInOrderWithoutTouchingThePrintSettings) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box, &stepper});
  ticket->setToDefault();
  EXPECT_THAT(log, ElementsAre("box text=fallback", "stepper text=fallback"));
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(PrintTicket, SavesTheTextOfTheFirstControlOnly) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box, &stepper});
  box.text = "first";
  stepper.text = "second";
  ticket->saveTicket();
  EXPECT_THAT(settings().log, ElementsAre("set MVKey=first"));
}

TEST_F(PrintTicket, IgnoresASaveThatFails) {
  const auto ticket = makeTicket();
  ticket->registerTargetInstances({&box});
  box.text = "first";
  settings().writeStatus = -1;
  ticket->saveTicket();
  EXPECT_EQ(settings().values["MVKey"], "fallback");
  EXPECT_EQ(box.text, "first");
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(PrintTicket, ReplacesItsControlsInTheSameList) {
  const auto ticket = makeTicket();
  const auto& list = ticket->targetInstances();
  ticket->registerTargetInstances({&box, &stepper});
  ticket->registerTargetInstances({&stepper});
  EXPECT_THAT(list, ElementsAre(&stepper));
  ticket->registerTargetInstances({});
  EXPECT_THAT(list, IsEmpty());
  EXPECT_EQ(&ticket->targetInstances(), &list);
}

}  // namespace
}  // namespace tandemtrim::test
