#include "adapters/appkit/foundation/raise.hpp"

#include <utility>

#include <gmock/gmock.h>

#include "adapters/appkit/foundation/foundation.hpp"
#include "tests/adapters/appkit/support/raising.hpp"

namespace tandemtrim::platform::appkit {
namespace {

struct Kind {
  void (*raise)();
  NSString* name;
  std::string reason;
};

// Counts its destructions.
struct Counted {
  explicit Counted(int& count) : count_(count) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() { ++count_; }

 private:
  int& count_;
};

std::pair<NSString*, std::string> caught(void (*raise)(), int& released) {
  @try {
    guarded([&] {
      const Counted counted(released);
      raise();
    });
  } @catch (NSException* exception) {
    return {[exception name], textOf([exception reason])};
  }
  return {};
}

TEST(GuardedWork, TurnsEachExceptionOfTheCoreIntoTheToolkits) {
  for (const Kind& kind : {Kind{raising::invalidArgument, NSInvalidArgumentException, "a %@ 100 %n"},
                           Kind{raising::outOfRange, NSRangeException, "a range"},
                           Kind{raising::badAlloc, NSMallocException, ""},
                           Kind{raising::runtimeError, NSGenericException, "something else"}}) {
    int released = 0;
    const auto [name, reason] = caught(kind.raise, released);
    EXPECT_EQ(textOf(name), textOf(kind.name));
    EXPECT_EQ(reason, kind.reason);
    EXPECT_EQ(released, 1) << textOf(name);
  }
}

TEST(GuardedWork, LetsTheToolkitsOwnExceptionsThrough) {
  int released = 0;
  const auto [name, reason] = caught([] { [NSException raise:@"Own" format:@"of the host"]; }, released);
  EXPECT_EQ(textOf(name), "Own");
  EXPECT_EQ(reason, "of the host");
  EXPECT_EQ(released, 1);
}

TEST(GuardedWork, ReturnsItsResult) {
  EXPECT_EQ(guarded([] { return std::string("result"); }), "result");
}

}  // namespace
}  // namespace tandemtrim::platform::appkit
