#include <cstdlib>

#include "tests/sequences/difference.hpp"

namespace tandemtrim::sequences {
namespace {

// The number in an environment variable, or `otherwise` without it.
std::uint64_t fromEnvironment(const char* name, std::uint64_t otherwise) {
  const char* given = std::getenv(name);
  return given == nullptr ? otherwise : std::stoull(given);
}

// Each sequence has its own seed, counted up from the first one, so that TANDEM_TRIM_SEED=...
// TANDEM_TRIM_SEQUENCES=1 repeats a single sequence.
TEST(Sequences, PanelAndModelAgreeAfterEachCallOfAnySequence) {
  const auto seed = fromEnvironment("TANDEM_TRIM_SEED", std::random_device{}());
  const auto count = fromEnvironment("TANDEM_TRIM_SEQUENCES", TANDEM_TRIM_SEQUENCES);
  std::uint64_t calls = 0;
  for (auto number = seed; number < seed + count; ++number) {
    Random random(number);
    const auto sequence = anySequence(random);
    calls += sequence.size();
    const auto difference = findDifference(sequence);
    ASSERT_FALSE(difference) << "TANDEM_TRIM_SEED=" << number << " TANDEM_TRIM_SEQUENCES=1\n"
                             << describe(shorten(*difference));
  }
  std::cout << count << " sequences of " << calls << " calls from seed " << seed << '\n';
}

// Makes the model click the check box where the panel clicks the restore-default button.
Operation misled(Operation operation) {
  if (operation.call == Call::clickDefault) operation.call = Call::clickCheck;
  return operation;
}

TEST(Sequences, ADifferenceIsShownByTheFewestCalls) {
  for (std::uint64_t seed = 1;; ++seed) {
    Random random(seed);
    const auto found = findDifference(anySequence(random), misled);
    if (!found) continue;
    EXPECT_THAT(describe(shorten(*found, misled)),
                testing::MatchesRegex("  panel ([01]): made for printer . by bundle [0-9]+\n"
                                      "  panel ([01]): panelView\n"
                                      "  panel ([01]): click the restore-default button\n"
                                      "  then .+"));
    break;
  }
}

}  // namespace
}  // namespace tandemtrim::sequences
