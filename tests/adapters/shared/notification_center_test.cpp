#include "adapters/shared/notification_center.hpp"

#include <deque>
#include <stdexcept>

#include <gmock/gmock.h>

namespace tandemtrim::platform::memory {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationCenterTest : public testing::Test {
 protected:
  // Subscribes an observer whose calls are recorded under its name.
  void subscribe(const void* observer, const std::string& name, NibObject* object,
                 const std::string& notification = "edit") {
    center.addObserver(observer, record(name), names.emplace_back(notification), object);
  }
  NotificationCenter::Selector record(const std::string& name) {
    return [this, name](const Notification& notification) {
      calls.push_back(name + " " + std::string(notification.name));
    };
  }

  NotificationCenter center;
  NibObject box;
  NibObject other;
  int first = 0;
  int second = 0;
  std::vector<std::string> calls;
  std::deque<std::string> names;
};

TEST_F(NotificationCenterTest, DeliversInTheOrderOfSubscriptionOnceForEach) {
  subscribe(&second, "b", &box);
  subscribe(&first, "a", &box);
  subscribe(&second, "c", &box);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("b edit", "a edit", "c edit"));
}

TEST_F(NotificationCenterTest, DeliversOnlyWhatTheSubscriptionNames) {
  subscribe(&first, "box", &box);
  subscribe(&first, "other", &other);
  subscribe(&first, "end", &box, "end");
  center.post("edit", &other);
  center.post("end", &box);
  center.post("Edit", &box);
  center.post("edit", nullptr);
  EXPECT_THAT(calls, ElementsAre("other edit", "end end"));
}

TEST_F(NotificationCenterTest, SaysWhichObjectPosted) {
  const NibObject* posted = nullptr;
  center.addObserver(
      &first, [&](const Notification& notification) { posted = notification.object; }, "edit", &box);
  center.post("edit", &box);
  EXPECT_EQ(posted, &box);
}

TEST_F(NotificationCenterTest, EndsEverySubscriptionOfAnObserverAndNoOther) {
  subscribe(&first, "a", &box);
  subscribe(&second, "b", &box);
  subscribe(&first, "c", &other);
  EXPECT_EQ(center.subscriptionCount(), 3U);
  center.removeObserver(&first);
  EXPECT_EQ(center.subscriptionCount(), 1U);
  center.post("edit", &box);
  center.post("edit", &other);
  EXPECT_THAT(calls, ElementsAre("b edit"));
  center.removeObserver(&first);
  EXPECT_EQ(center.subscriptionCount(), 1U);
}

TEST_F(NotificationCenterTest, EndsTheLatestSubscriptionOfAnObserverToANameFromAnObject) {
  subscribe(&first, "a", &box);
  subscribe(&first, "b", &box);
  subscribe(&first, "c", &other);
  subscribe(&first, "d", &box, "end");
  subscribe(&second, "e", &box);
  center.removeObserver(&first, std::string("edit"), &box);
  center.post("edit", &box);
  center.post("edit", &other);
  center.post("end", &box);
  EXPECT_THAT(calls, ElementsAre("a edit", "e edit", "c edit", "d end"));
  EXPECT_EQ(center.subscriptionCount(), 4U);
  center.removeObserver(&first, "edit", &box);
  center.removeObserver(&first, "edit", &box);
  center.removeObserver(&second, "end", &box);
  calls.clear();
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("e edit"));
  EXPECT_EQ(center.subscriptionCount(), 3U);
}

TEST_F(NotificationCenterTest, LetsASelectorEndItsOwnSubscriptionsOneByOne) {
  subscribe(&first, "earlier", &box);
  center.addObserver(
      &first,
      [&](const Notification&) {
        for (int count = 0; count < 3; ++count) center.removeObserver(&first, "edit", &box);
        EXPECT_EQ(center.subscriptionCount(), 0U);
        calls.emplace_back("ending");
      },
      "edit", &box);
  subscribe(&first, "later", &box);
  center.post("edit", &box);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("earlier edit", "ending"));
}

TEST_F(NotificationCenterTest, LetsASelectorEndItsOwnAndLaterSubscriptions) {
  center.addObserver(
      &first,
      [&](const Notification&) {
        calls.emplace_back("ending");
        center.removeObserver(&first);
        center.removeObserver(&second);
        EXPECT_EQ(center.subscriptionCount(), 0U);
      },
      "edit", &box);
  subscribe(&second, "ended", &box);
  center.post("edit", &box);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("ending"));
}

TEST_F(NotificationCenterTest, LetsASelectorSubscribe) {
  center.addObserver(
      &first,
      [&](const Notification&) {
        for (int count = 0; count < 100; ++count) subscribe(&second, "new", &other);
        center.removeObserver(&first);
      },
      "edit", &box);
  subscribe(&second, "later", &box);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("later edit"));
  EXPECT_EQ(center.subscriptionCount(), 101U);
  center.post("edit", &other);
  EXPECT_EQ(calls.size(), 101U);
}

TEST_F(NotificationCenterTest, LetsASelectorPost) {
  subscribe(&second, "inner", &other);
  center.addObserver(
      &first,
      [&](const Notification&) {
        center.post("edit", &other);
        center.removeObserver(&first);
        calls.emplace_back("outer");
      },
      "edit", &box);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("inner edit", "outer"));
  EXPECT_EQ(center.subscriptionCount(), 1U);
}

TEST_F(NotificationCenterTest, PassesOnTheExceptionOfASelectorAndStaysUsable) {
  center.addObserver(
      &first,
      [&](const Notification&) {
        center.removeObserver(&first);
        throw std::runtime_error("refused");
      },
      "edit", &box);
  subscribe(&second, "later", &box);
  EXPECT_THROW(center.post("edit", &box), std::runtime_error);
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_EQ(center.subscriptionCount(), 1U);
  center.post("edit", &box);
  EXPECT_THAT(calls, ElementsAre("later edit"));
}

TEST(DefaultCenter, IsTheCenterThatControlsPostTo) {
  EXPECT_EQ(&platform::defaultCenter(), &notificationCenter());
  EXPECT_EQ(notificationCenter().subscriptionCount(), 0U);
}

}  // namespace
}  // namespace tandemtrim::platform::memory
