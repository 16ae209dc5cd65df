#include "host/interrupted.hpp"

#include <csignal>

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

struct Sent {
  int signal;
  std::string word;
  int status;
};

class ASignal : public testing::TestWithParam<Sent> {};

TEST_P(ASignal, IsNamedWithTheExitStatusOfAShell) {
  const auto& [signal, word, status] = GetParam();
  const auto failure = interruptedBy(signal, std::nullopt);
  EXPECT_EQ(failure.what(), word);
  EXPECT_EQ(failure.trouble(), Trouble::cancelled);
  EXPECT_EQ(failure.exitStatus(), status);
}

TEST_P(ASignal, IsNamedBeforeTheFailureThatItCauses) {
  const auto& [signal, word, status] = GetParam();
  const Failure cause(Trouble::unconfirmedJob, Fact("job [number] waits"_fact, {{"[number]", "17"}}),
                      "; see it");
  const auto failure = interruptedBy(signal, cause);
  EXPECT_EQ(failure.what(), word + "; job 17 waits; see it");
  EXPECT_EQ(test::inADialog(failure.fact()), "job 17 waits");
  EXPECT_EQ(failure.trouble(), Trouble::unconfirmedJob);
  EXPECT_EQ(failure.exitStatus(), status);
}

TEST_P(ASignal, IsNamedOnce) {
  const auto& [signal, word, status] = GetParam();
  const auto failure =
      interruptedBy(signal, Failure(Trouble::other, word + "; job 17 was cancelled", "; why"));
  EXPECT_EQ(failure.what(), word + "; job 17 was cancelled; why");
  EXPECT_EQ(failure.exitStatus(), status);
}

INSTANTIATE_TEST_SUITE_P(Signals, ASignal,
                         testing::Values(Sent{SIGINT, "interrupted", 130}, Sent{SIGTERM, "terminated", 143}),
                         [](const auto& tested) { return tested.param.word; });

TEST(AnIgnoredSignal, IsRecognized) {
  auto* const before = std::signal(SIGTERM, SIG_IGN);
  EXPECT_TRUE(isIgnored(SIGTERM));
  EXPECT_FALSE(isIgnored(SIGCHLD));
  std::signal(SIGTERM, before);
}

}  // namespace
}  // namespace tandemtrim::host
