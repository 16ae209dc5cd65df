#include "host/notifier/order.hpp"

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

NotifierOrder sampleOrder() {
  return {"desk:631", "Mor\"va", 7, {"a", "b\nc"}, {"d", ""}, {"é", "%s"}, std::chrono::seconds(9)};
}

TEST(NotifierOrder, IsReadAsItWasWritten) {
  auto order = sampleOrder();
  EXPECT_EQ(orderFrom(orderText(order)), order);
  order.server.reset();
  EXPECT_EQ(orderFrom(orderText(order)), order);
}

TEST(NotifierOrder, HasTimeForItsWholeWatchAndForSlowAnswers) {
  auto order = sampleOrder();
  EXPECT_EQ(longestTimeFor(order), order.watched + kTimeForAnswers);
  EXPECT_GE(kTimeForAnswers, std::chrono::seconds(30)) << "the desktop may take 10 s for each of 3 answers";
}

TEST(NotifierOrder, IsWrittenEvenIfATextIsNotUtf8) {
  auto order = sampleOrder();
  order.sent.body = "\xFF";
  EXPECT_EQ(orderFrom(orderText(order)).sent.body, "\uFFFD");
}

TEST(NotifierOrder, IsRefusedIfAPartIsMissing) {
  const auto whole = orderText(sampleOrder());
  for (const std::string part : {"printer", "job", "sent", "cancelled", "failed", "watched", "heading"}) {
    auto text = whole;
    text.replace(text.find('"' + part + '"'), part.size() + 2, "\"other\"");
    EXPECT_THROW(static_cast<void>(orderFrom(text)), Failure) << text;
  }
}

}  // namespace
}  // namespace tandemtrim::host
