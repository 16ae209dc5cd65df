#import <objc/runtime.h>

#import "tests/platform/appkit/hosted_panel_test.h"

// GNUstep's counts of objects, which its headers declare for debug builds alone.
extern "C" {
BOOL GSDebugAllocationActive(BOOL active);
int GSDebugAllocationCount(Class counted);
}

namespace host {
namespace {

// The classes that the bundle defines, the toolkit's aside.
std::vector<Class> classesOfTheBundle() {
  std::vector<Class> all(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
  objc_getClassList(all.data(), static_cast<int>(all.size()));
  std::vector<Class> found;
  for (Class one : all) {
    if ([NSBundle bundleForClass:one] == pluginBundle()) found.push_back(one);
  }
  return found;
}

class LifetimeInAHost : public HostedPanelTest {
 protected:
  LifetimeInAHost() { GSDebugAllocationActive(YES); }

  // Instances of the bundle's classes that are alive.
  [[nodiscard]] static std::map<std::string, int> living() {
    std::map<std::string, int> counts;
    for (Class one : classesOfTheBundle()) {
      if (const int count = GSDebugAllocationCount(one); count != 0) counts[class_getName(one)] = count;
    }
    return counts;
  }
  const std::map<std::string, int> before = living();
};

TEST_F(LifetimeInAHost, IsThatOfClassesWhoseNamesCannotClash) {
  const auto classes = classesOfTheBundle();
  EXPECT_EQ(classes.size(), 12U);
  for (Class one : classes) {
    EXPECT_THAT(class_getName(one), testing::MatchesRegex("MorvaTT[A-Za-z]+KV2"));
  }
}

TEST_F(LifetimeInAHost, EndsWithTheListForEveryObjectOfAThousandPanels) {
  for (int count = 0; count < 1000; ++count) {
    @autoreleasepool {
      ASSERT_NO_FATAL_FAILURE(open());
      if (count % 2 == 0) [panel panelView];
      if (count % 4 == 0) [panel willShow];
      [panel supportedPPDOptionKeys];
      [panel summaryInfo];
      [panel saveValuesAndReturnError:nullptr];
    }
    close();
  }
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, EndsForAPanelThatWasShownAndTypedInto) {
  for (int count = 0; count < 20; ++count) {
    @autoreleasepool {
      ASSERT_NO_FATAL_FAILURE(showOn());
      person::replaceText(box(@"Top"), @"12");
      person::step(stepper(@"Left"), 1);
      person::click(checkBox());
      save();
      close();
      handleEvents();
    }
  }
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, EndsForAPanelWhoseListIsReleasedBeforeItsWindow) {
  @autoreleasepool {
    ASSERT_NO_FATAL_FAILURE(showOn());
    NSWindow* const open = window;
    NSButton* const button = checkBox();
    window = nil;
    close();
    EXPECT_EQ([button target], nil);
    [button performClick:nil];
    [open close];
    handleEvents();
  }
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, OfWhatAHostRetainsGoesOnWithoutThePanel) {
  id controller = nil;
  id info = nil;
  @autoreleasepool {
    ASSERT_NO_FATAL_FAILURE(open());
    [panel panelView];
    controller = [[panel viewController] retain];
    info = [[panel commonInfo] retain];
    close();
  }
  EXPECT_EQ([[info performSelector:@selector(marginLimit:) withObject:@"Top"] intValue], 20);
  EXPECT_NE([controller performSelector:@selector(tandemTrimView)], nil);
  [controller release];
  [info release];
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, EndsForARequestThatFails) {
  @autoreleasepool {
    EXPECT_EQ([plugin PDEPanelsForType:@"other" withHostInfo:host], nil);
    EXPECT_EQ([[NSClassFromString(@"MorvaTTPdePanelKV2") alloc] performSelector:@selector(initWithCallback:
                                                                                                    bundle:)
                                                                     withObject:nil
                                                                     withObject:nil],
              nil);
    EXPECT_EQ(
        [[NSClassFromString(@"MorvaTTViewControllerKV2") alloc] performSelector:@selector(initWithCommonInfo:)
                                                                     withObject:nil],
        nil);
  }
  EXPECT_EQ(living(), before);
}

}  // namespace
}  // namespace host
