// Loads a bundle as a print dialog does, with the system's own print settings but without the dialog, and
// runs the conformance suite on it. It shows whether the system refuses to load the bundle or the bundle is
// at fault.
#include <cstdlib>
#include <iostream>
#include <memory>

#include <gmock/gmock.h>

#import "tests/adapters/appkit/support/host.h"

namespace {

constexpr int kMisused = 2;
constexpr int kRefused = 3;

// Why the system does not load the bundle, or nil.
NSString* refusal(NSBundle* bundle) {
  if (bundle == nil) return @"there is no bundle";
  NSError* error = nil;
#if defined(GNUSTEP)
  // GNUstep's loadAndReturnError: loads nothing.
  const BOOL isLoaded = [bundle load];
#else
  const BOOL isLoaded = [bundle loadAndReturnError:&error];
#endif
  if (!isLoaded) return error == nil ? @"no reason is given" : [error description];
  return [bundle principalClass] == nil ? @"its principal class is not found" : nil;
}

// Releases what a case leaves in the autorelease pool.
class PoolForEachCase : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*info*/) override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void OnTestEnd(const testing::TestInfo& /*info*/) override { [pool_ drain]; }

  NSAutoreleasePool* pool_ = nil;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  @autoreleasepool {
    // An application takes any other argument for a document to open.
    NSString* path = [[NSUserDefaults standardUserDefaults] stringForKey:@"bundle"];
    if (path == nil) {
      std::cerr << "usage: " << argv[0] << " -bundle PATH\n";
      return kMisused;
    }
    setenv("TANDEM_TRIM_BUNDLE", [path UTF8String], 1);
    host::startApplication();
    if (NSString* reason = refusal(host::pluginBundle())) {
      std::cerr << [path UTF8String] << " is not loaded: " << [reason UTF8String] << '\n';
      return kRefused;
    }
    std::cout << [path UTF8String] << " is loaded\n";
  }
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<PoolForEachCase>().release());
  return RUN_ALL_TESTS();
}
