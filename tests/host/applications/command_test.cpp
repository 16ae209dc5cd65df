#include "host/applications/command.hpp"

#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/time.h>

namespace tandemtrim::host {
namespace {

using namespace std::chrono_literals;

TEST(ACommand, ReturnsItsOutputAndWhetherItSucceeded) {
  const auto done = runCommand({"sh", "-c", "echo out; echo err >&2"}, 60s);
  EXPECT_TRUE(done.succeeded && done.inTime && done.isInstalled);
  EXPECT_EQ(done.said, "out\nerr\n");
  const auto failed = runCommand({"sh", "-c", "cat; exit 3"}, 60s);
  EXPECT_FALSE(failed.succeeded);
  EXPECT_TRUE(failed.inTime);
  EXPECT_EQ(failed.said, "");
}

TEST(ACommand, ThatASignalEndsHasFailed) {
  const auto ended = runCommand({"sh", "-c", "kill -KILL $$"}, 60s);
  EXPECT_FALSE(ended.succeeded);
  EXPECT_TRUE(ended.inTime && ended.isInstalled);
}

TEST(ACommand, HasAllItsOutputReadEvenAfterItsEnd) {
  const auto done = runCommand({"sh", "-c", "head -c 60000 /dev/zero | tr '\\0' x"}, 60s);
  EXPECT_EQ(done.said, std::string(60000, 'x'));
}

TEST(ACommand, IsWaitedForDespiteSignals) {
  struct sigaction before {};
  struct sigaction nothing {};
  nothing.sa_handler = [](int) {};
  sigaction(SIGALRM, &nothing, &before);
  const itimerval soon{{0, 20'000}, {0, 20'000}};
  setitimer(ITIMER_REAL, &soon, nullptr);
  const auto done = runCommand({"sh", "-c", "sleep 0.2; echo done"}, 60s);
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_TRUE(done.succeeded);
  EXPECT_EQ(done.said, "done\n");
}

TEST(ACommand, ThatCannotBeStartedIsNotReportedAsMissing) {
  rlimit files{};
  getrlimit(RLIMIT_NOFILE, &files);
  const rlimit noFiles{0, files.rlim_max};
  setrlimit(RLIMIT_NOFILE, &noFiles);
  const auto failed = runCommand({"true"}, 60s);
  setrlimit(RLIMIT_NOFILE, &files);
  EXPECT_FALSE(failed.succeeded);
  EXPECT_TRUE(failed.isInstalled);
}

TEST(ACommand, IsReportedAsNotInstalledIfNoProgramHasItsName) {
  const auto missing = runCommand({"tandem-trim-no-such-program"}, 60s);
  EXPECT_FALSE(missing.succeeded || missing.isInstalled);
  EXPECT_TRUE(runCommand({"/"}, 60s).isInstalled);
}

TEST(ACommand, IsKilledWithItsChildrenWhenItTakesTooLong) {
  const auto start = std::chrono::steady_clock::now();
  const auto slow = runCommand({"sh", "-c", "sleep 600 & echo $!; sleep 600"}, 300ms);
  EXPECT_FALSE(slow.succeeded || slow.inTime);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 60s);
  // A process that has ended has no arguments, even before its parent has waited for it.
  const auto started = "/proc/" + std::to_string(std::stoi(slow.said)) + "/cmdline";
  const auto isRunning = [&] {
    std::string arguments;
    return static_cast<bool>(std::getline(std::ifstream(started), arguments));
  };
  while (isRunning() && std::chrono::steady_clock::now() - start < 60s) std::this_thread::yield();
  EXPECT_FALSE(isRunning());
}

TEST(ACommand, IsDoneEvenIfAChildKeepsItsOutputOpen) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(runCommand({"sh", "-c", "sleep 5 & echo done"}, 60s).succeeded);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST(ACommand, HasItsOutputCutAt64Kilobytes) {
  EXPECT_TRUE(runCommand({"sh", "-c", "yes &"}, 60s).succeeded);
  const auto endless = runCommand({"yes"}, 500ms);
  EXPECT_FALSE(endless.inTime);
  EXPECT_EQ(endless.said.size(), 65536U);
}

}  // namespace
}  // namespace tandemtrim::host
