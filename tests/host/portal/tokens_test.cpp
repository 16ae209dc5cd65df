#include "host/portal/tokens.hpp"

#include <deque>
#include <set>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

TEST(Tokens, LeadTheirProgramToItsSessionOnce) {
  Tokens tokens;
  const auto token = tokens.issue("org.example.Editor", 7);
  EXPECT_EQ(tokens.take(token, "org.example.Editor"), 7);
  EXPECT_EQ(tokens.take(token, "org.example.Editor"), std::nullopt);
}

TEST(Tokens, AreInvalidForAnotherProgramAndStayValidForTheirOwn) {
  Tokens tokens;
  const auto token = tokens.issue("org.example.Editor", 7);
  EXPECT_EQ(tokens.take(token, "org.example.Other"), std::nullopt);
  EXPECT_EQ(tokens.take(token, ""), std::nullopt);
  EXPECT_EQ(tokens.take(token, "org.example.Editor"), 7);
}

TEST(Tokens, AreNeverZeroOrIssuedTwice) {
  std::deque<std::uint32_t> bits{0, 5, 5, 0, 6};
  Tokens tokens([&] {
    const auto next = bits.front();
    bits.pop_front();
    return next;
  });
  EXPECT_EQ(tokens.issue("", 1), 5U);
  EXPECT_EQ(tokens.issue("", 2), 6U);
  EXPECT_EQ(tokens.take(0, ""), std::nullopt);
}

TEST(Tokens, OfASessionThatHasEndedAreInvalid) {
  Tokens tokens;
  const auto ended = tokens.issue("", 1);
  const auto other = tokens.issue("", 2);
  tokens.forget(1);
  EXPECT_EQ(tokens.take(ended, ""), std::nullopt);
  EXPECT_EQ(tokens.take(other, ""), 2);
}

TEST(RandomBits, UseAllThirtyTwo) {
  std::uint32_t set = 0;
  std::uint32_t unset = 0;
  for (int i = 0; i < 200; ++i) {
    const auto bits = randomBits();
    set |= bits;
    unset |= ~bits;
  }
  EXPECT_EQ(set, UINT32_MAX);
  EXPECT_EQ(unset, UINT32_MAX);
}

}  // namespace
}  // namespace tandemtrim::host
