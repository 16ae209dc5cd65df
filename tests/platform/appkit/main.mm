#include <memory>

#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

namespace {

// Everything that a test leaves to be released goes with the test.
class PoolForEachTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void OnTestEnd(const testing::TestInfo&) override { [pool_ drain]; }

  NSAutoreleasePool* pool_ = nil;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // The toolkit says why an exception of its own was raised, and GoogleTest could not.
  GTEST_FLAG_SET(catch_exceptions, false);
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<PoolForEachTest>().release());
  return RUN_ALL_TESTS();
}
