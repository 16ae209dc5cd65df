#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <objc/runtime.h>

namespace {

// Releases what a test leaves in the autorelease pool.
class PoolForEachTest : public testing::EmptyTestEventListener {
  void OnTestIterationStart(const testing::UnitTest& tests, int) override {
    std::cout << "TANDEM_TRIM_SEED=" << tests.random_seed() << " repeats this order of tests" << std::endl;
  }
  void OnTestStart(const testing::TestInfo&) override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void OnTestEnd(const testing::TestInfo&) override { [pool_ drain]; }

  NSAutoreleasePool* pool_ = nil;
};

// GNUstep sends every selected text to its pasteboard server from within the edit. If that server does not
// answer in time, as on a busy machine, the edit is left half done. No test reads that pasteboard.
void keepSelectionsFromThePasteboardServer() {
  const auto doNothing = [](id, SEL) {};
  class_replaceMethod([NSTextView class], @selector(copySelection), reinterpret_cast<IMP>(+doNothing), "v@:");
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  constexpr int kSeeds = 100000;  // GoogleTest takes no larger ones
  if (const char* seed = std::getenv("TANDEM_TRIM_SEED"))
    GTEST_FLAG_SET(random_seed, static_cast<int>(std::stoul(seed) % kSeeds));
  // The toolkit reports the reason of its own exceptions; GoogleTest cannot.
  GTEST_FLAG_SET(catch_exceptions, false);
  @autoreleasepool {
    keepSelectionsFromThePasteboardServer();
  }
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<PoolForEachTest>().release());
  return RUN_ALL_TESTS();
}
