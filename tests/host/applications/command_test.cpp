#include "host/applications/command.hpp"

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

#include <gmock/gmock.h>

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

TEST(ACommand, IsReportedAsNotInstalledWhereNoProgramHasItsName) {
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

TEST(ACommand, IsDoneThoughAChildKeepsItsOutputOpen) {
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
