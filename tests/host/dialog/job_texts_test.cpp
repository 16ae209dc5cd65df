#include "host/dialog/notification/job_texts.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;

PanelResult samplePanel() {
  PanelSetting position;
  position.keyword = "MVPrintPosition";
  position.title = "Print Position";
  position.choices = {{"Left", "Far Left"}, {"Center", "Middle"}};
  PanelSetting margin;
  margin.keyword = "MVLeftMargin";
  margin.title = "Left Margin";
  return {{{"Print Position", "Middle"}, {"Left Margin", "3"}}, {position, margin}};
}

SentJob sampleJob() {
  SentJob job{7, "Morva", 5};
  job.reported.emplace();
  job.title = "Report";
  return job;
}

SentJob jobThatLost(std::vector<LostOption> lost) {
  auto job = sampleJob();
  job.reported->lost = std::move(lost);
  job.failure = Failure(Trouble::lostSettings, "lost");
  return job;
}

TEST(JobTexts, SayThatAllIsConfirmedAndHaveThePanelsSummary) {
  const auto order = orderFor(sampleJob(), "desk:631", samplePanel());
  EXPECT_EQ(order.sent, (NotificationText{"Job 7 on Morva: all settings confirmed",
                                          "Report\nPrint Position: Middle, Left Margin: 3"}));
  EXPECT_EQ(order.server, "desk:631");
  EXPECT_EQ(order.printer, "Morva");
  EXPECT_EQ(order.job, 7);
  EXPECT_EQ(order.watched, std::chrono::minutes(1));
}

TEST(JobTexts, NameOnlyTheDocumentIfThePrinterHasNoPanel) {
  EXPECT_EQ(orderFor(sampleJob(), {}, {}).sent.body, "Report");
}

TEST(JobTexts, NameLostSettingsByThePanelsTitles) {
  const auto order = orderFor(
      jobThatLost(
          {{"MVPrintPosition", "Left", "Center"}, {"MVLeftMargin", "3", {}}, {"sides", "two", "one"}}),
      {}, samplePanel());
  EXPECT_EQ(order.sent.heading, "Job 7 on Morva: settings lost");
  EXPECT_EQ(order.sent.body,
            "Report\nPrint Position (Far Left → Middle), Left Margin (3), sides (two → one)");
}

TEST(JobTexts, SayWhyNothingIsConfirmed) {
  auto job = sampleJob();
  job.reported.reset();
  job.failure = Failure(Trouble::unconfirmedSettings, "the server is silent");
  EXPECT_EQ(orderFor(job, {}, samplePanel()).sent,
            (NotificationText{"Job 7 on Morva: settings not confirmed", "Report\nthe server is silent"}));
}

TEST(JobTexts, HaveNoControlCharacters) {
  auto job = sampleJob();
  job.title = "a\nb";
  job.printer = "M\x1b[1m";
  const auto order = orderFor(job, {}, {});
  EXPECT_EQ(order.sent.body, "a\uFFFDb");
  EXPECT_EQ(order.failed, (NotificationText{"Job 7 on M\uFFFD[1m failed", "a\uFFFDb"}));
  EXPECT_EQ(order.cancelled.heading, "Job 7 on M\uFFFD[1m was cancelled");
}

}  // namespace
}  // namespace tandemtrim::host
