#include "host/portal/main_loop.hpp"

#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include <glib.h>
#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

using std::chrono_literals::operator""s;

void runWhatIsReady() {
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
}

// A timer with a delay of 0 s is due at once; those that exist already run before this one.
void runTimersThatAreDue() {
  bool isLater = false;
  const Timer later(0s, [&] { isLater = true; });
  while (!isLater) g_main_context_iteration(nullptr, TRUE);
}

TEST(OnTheMainLoop, ActsRunInTheirOrderAndNotAtOnce) {
  std::string done;
  onMainLoop([&] {
    done += 'a';
    onMainLoop([&] { done += 'c'; });
    done += 'b';
  });
  onMainLoop([&] { done += '-'; });
  EXPECT_EQ(done, "");
  runWhatIsReady();
  EXPECT_EQ(done, "ab-c");
}

TEST(OnTheMainLoop, ActsOfOtherThreadsRunOnItsThread) {
  std::optional<std::thread::id> ran;
  std::thread([&] { onMainLoop([&] { ran = std::this_thread::get_id(); }); }).join();
  runWhatIsReady();
  EXPECT_EQ(ran, std::this_thread::get_id());
}

TEST(OnTheMainLoop, AnActThatRaisesIsReportedAndLaterOnesRun) {
  bool isDone = false;
  onMainLoop([] { throw std::runtime_error("no luck"); });
  onMainLoop([&] { isDone = true; });
  g_test_expect_message(nullptr, G_LOG_LEVEL_WARNING, "*no luck*");
  runWhatIsReady();
  g_test_assert_expected_messages();
  EXPECT_TRUE(isDone);
}

TEST(ATimer, RunsOnce) {
  int times = 0;
  const Timer timer(0s, [&] { ++times; });
  EXPECT_EQ(times, 0);
  for (int i = 0; i < 3; ++i) runTimersThatAreDue();
  EXPECT_EQ(times, 1);
}

TEST(ATimer, DoesNotRunOnceItIsDestroyedOrReplaced) {
  std::string ran;
  {
    const Timer gone(0s, [&] { ran += "gone "; });
  }
  Timer kept(0s, [&] { ran += "replaced "; });
  kept = Timer(0s, [&] { ran += "kept"; });
  runTimersThatAreDue();
  EXPECT_EQ(ran, "kept");
}

TEST(ATimer, CanBeMovedAndIsStoppedByAssigningAnEmptyOne) {
  std::string ran;
  std::optional<Timer> first(std::in_place, 0s, [&] { ran += "moved"; });
  const Timer second(std::move(*first));
  first.reset();
  Timer stopped(0s, [&] { ran += "stopped"; });
  stopped = Timer();
  runTimersThatAreDue();
  EXPECT_EQ(ran, "moved");
}

TEST(ATimer, MayDestroyItselfWhileItRuns) {
  bool isDone = false;
  std::optional<Timer> timer;
  timer.emplace(0s, [&] {
    timer.reset();
    isDone = true;
  });
  runTimersThatAreDue();
  EXPECT_TRUE(isDone);
}

}  // namespace
}  // namespace tandemtrim::host
