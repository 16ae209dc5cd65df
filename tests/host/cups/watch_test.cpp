#include "host/cups/connection/watch.hpp"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/resource.h>

#include "host/cups/connection/block_signals.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "tests/host/cups/planned_server.hpp"

namespace tandemtrim::host {
namespace {

using test::PlannedServer;

long peakMemory() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

class AWatch : public testing::Test {
 protected:
  // Whether the connection is cut within this time.
  [[nodiscard]] bool isCutWithin(std::chrono::milliseconds time) const {
    pollfd end{httpGetFd(http.get()), POLLRDHUP, 0};
    return poll(&end, 1, static_cast<int>(time.count())) == 1;
  }

  const PlannedServer server;
  const HttpHandle http{
      httpConnect2("127.0.0.1", server.port(), nullptr, AF_INET, HTTP_ENCRYPTION_NEVER, 1, 5000, nullptr)};
  // More than a test waits for what should come, and how long it waits for what should not.
  const std::chrono::seconds long_{20};
  const std::chrono::milliseconds short_{100};
};

TEST_F(AWatch, AllowsAnswersAFixedAmountOfMemory) {
  constexpr long kKilobytes = 128L * 1024;
  const auto before = peakMemory();
  Bounds bounds(std::chrono::seconds(1));
  EXPECT_GE(bounds.mostMemory, before + kKilobytes);
  EXPECT_LE(bounds.mostMemory, peakMemory() + kKilobytes);
  bounds.mostMemory = 0;
  bounds.givenUp = GivenUp::tooSlow;
  bounds.renew();
  EXPECT_GE(bounds.mostMemory, before + kKilobytes);
  EXPECT_EQ(bounds.givenUp, GivenUp::no);
}

TEST_F(AWatch, CutsARequestThatIsLate) {
  Bounds bounds(std::chrono::seconds(0));
  const Watch watch(http.get(), bounds, Patience::none);
  EXPECT_TRUE(isCutWithin(long_));
  EXPECT_EQ(bounds.givenUp, GivenUp::tooSlow);
}

TEST_F(AWatch, CutsARequestWhoseAnswerIsTooLargeAndSaysSoEvenIfItIsLate) {
  Bounds bounds(std::chrono::seconds(0));
  bounds.mostMemory = 0;
  const Watch watch(http.get(), bounds, Patience::none);
  EXPECT_TRUE(isCutWithin(long_));
  EXPECT_EQ(bounds.givenUp, GivenUp::tooLarge);
}

TEST_F(AWatch, LeavesARequestThatIsWithinItsBounds) {
  Bounds bounds(std::chrono::seconds(60));
  const Watch watch(http.get(), bounds, Patience::none);
  EXPECT_FALSE(isCutWithin(short_));
  EXPECT_EQ(bounds.givenUp, GivenUp::no);
}

TEST_F(AWatch, WaitsWhileTheUserIsAsked) {
  Bounds bounds(std::chrono::seconds(0));
  std::optional<WaitForUser> question(std::in_place);
  const Watch watch(http.get(), bounds, Patience::none);
  EXPECT_FALSE(isCutWithin(short_));
  question.reset();
  EXPECT_TRUE(isCutWithin(long_));
}

TEST_F(AWatch, CutsAPieceNoByteOfWhichLeaves) {
  Bounds bounds(std::chrono::seconds(0));
  const Watch watch(http.get(), bounds, Patience::whileBytesLeave);
  EXPECT_TRUE(isCutWithin(long_));
}

TEST_F(AWatch, CountsTheBytesThatTheServerHasNotTaken) {
  EXPECT_EQ(bytesOnTheWay(http.get()), 0);
  // The server reads only its first connection.
  const HttpHandle unread(
      httpConnect2("127.0.0.1", server.port(), nullptr, AF_INET, HTTP_ENCRYPTION_NEVER, 1, 5000, nullptr));
  const std::vector<char> bytes(1 << 20);
  while (send(httpGetFd(unread.get()), bytes.data(), bytes.size(), MSG_DONTWAIT) > 0) {
  }
  EXPECT_GT(bytesOnTheWay(unread.get()), 0);
  const HttpHandle unconnected(
      httpConnect2("127.0.0.1", server.port(), nullptr, AF_INET, HTTP_ENCRYPTION_NEVER, 1, 0, nullptr));
  EXPECT_EQ(bytesOnTheWay(unconnected.get()), 0);
}

TEST(TheMainThread, GetsTheSignalsThatAnotherThreadBlocks) {
  std::jthread([] {
    blockSignals();
    sigset_t blocked;
    sigemptyset(&blocked);
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGCHLD})
      EXPECT_EQ(sigismember(&blocked, signal), 1) << signal;
  }).join();
}

}  // namespace
}  // namespace tandemtrim::host
