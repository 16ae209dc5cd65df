#include <map>
#include <vector>

#import <objc/runtime.h>

#import "tests/adapters/appkit/support/damaged_resources.h"

// GNUstep's counts of objects, which its headers declare for debug builds only.
extern "C" {
BOOL GSDebugAllocationActive(BOOL active);
int GSDebugAllocationCount(Class counted);
}

namespace host {
namespace {

// The classes that the bundle defines.
std::vector<Class> classesOfTheBundle() {
  std::vector<Class> all(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
  objc_getClassList(all.data(), static_cast<int>(all.size()));
  std::vector<Class> found;
  for (Class one : all) {
    if ([NSBundle bundleForClass:one] == pluginBundle()) found.push_back(one);
  }
  return found;
}

using Counts = std::map<std::string, int>;

class LifetimeInAHost : public DamagedResources {
 protected:
  LifetimeInAHost() { GSDebugAllocationActive(YES); }

  // Instances of the bundle's classes that are alive.
  [[nodiscard]] static Counts living() {
    Counts counts;
    for (Class one : classesOfTheBundle()) {
      if (const int count = GSDebugAllocationCount(one); count != 0) counts[class_getName(one)] = count;
    }
    return counts;
  }
  [[nodiscard]] NSBundle* makeBundleWithout(NSString* mainKey, NSString* key) {
    change(mainKey, key, nil);
    return bundle();
  }
  // The exception that an initialiser raises on a new object.
  [[nodiscard]] static std::string exceptionOfMaking(NSString* name, SEL initialiser, id one, id other) {
    id made = [NSClassFromString(name) alloc];
    return exceptionOf([&] {
      @autoreleasepool {
        [made performSelector:initialiser withObject:one withObject:other];
      }
    });
  }
  const Counts before = living();
};

// Records each deallocation of an instance of these classes, in order: its class's name, and how many text
// boxes are alive at that time. Each class must define -dealloc.
class Deallocations {
 public:
  using Noted = std::vector<std::pair<std::string, int>>;

  explicit Deallocations(std::initializer_list<const char*> names) {
    for (const char* name : names)
      originals[objc_getClass(name)] =
          class_replaceMethod(objc_getClass(name), kDealloc, reinterpret_cast<IMP>(noteAndDeallocate), "v@:");
  }
  Deallocations(const Deallocations&) = delete;
  Deallocations& operator=(const Deallocations&) = delete;
  ~Deallocations() {
    for (const auto& [watched, original] : originals) class_replaceMethod(watched, kDealloc, original, "v@:");
    originals.clear();
    noted.clear();
  }

  static inline Noted noted;

 private:
  static void noteAndDeallocate(id self, SEL selector) {
    Class const gone = object_getClass(self);
    noted.emplace_back(class_getName(gone), GSDebugAllocationCount(NSClassFromString(@"MorvaTTTextBoxKV2")));
    originals.at(gone)(self, selector);
  }

  static inline SEL const kDealloc = @selector(dealloc);
  static inline std::map<Class, IMP> originals;
};

TEST_F(LifetimeInAHost, BelongsToClassesWhoseNamesCannotClash) {
  const auto classes = classesOfTheBundle();
  EXPECT_EQ(classes.size(), 14U);
  for (Class one : classes) {
    EXPECT_THAT(class_getName(one), testing::MatchesRegex("MorvaTT[A-Za-z]+KV2"));
  }
}

TEST_F(LifetimeInAHost, IsCountedForEveryObjectOfAPanel) {
  @autoreleasepool {
    ASSERT_NO_FATAL_FAILURE(open());
    [panel panelView];
  }
  Counts counts = living();
  for (const auto& [name, count] : before) counts[name] -= count;
  std::erase_if(counts, [](const auto& counted) { return counted.second == 0; });
  EXPECT_EQ(counts, (Counts{{"MorvaTTPdePanelKV2", 1},
                            {"MorvaTTCommonInfoKV2", 1},
                            {"MorvaTTMarginInfoKV2", 1},
                            {"MorvaTTViewControllerKV2", 1},
                            {"MorvaTTPanelViewKV2", 1},
                            {"MorvaTTCheckBoxKV2", 1},
                            {"MorvaTTPopUpButtonKV2", 2},
                            {"MorvaTTTextLabelKV2", 10},
                            {"MorvaTTTextBoxKV2", 4},
                            {"MorvaTTStepperKV2", 4},
                            {"MorvaTTDecimalFormatterKV2", 1},
                            {"MorvaTTButtonKV2", 1}}));
}

TEST_F(LifetimeInAHost, EndsForTheControllerItsNibAndThenTheCommonInfo) {
  const NSUInteger hosts = [host retainCount];
  const NSUInteger bundles = [pluginBundle() retainCount];
  const Deallocations recorded{"MorvaTTPdePanelKV2", "MorvaTTCommonInfoKV2", "MorvaTTViewControllerKV2"};
  @autoreleasepool {
    ASSERT_NO_FATAL_FAILURE(open());
    [panel panelView];
    [panel willShow];
  }
  EXPECT_EQ(Deallocations::noted, Deallocations::Noted());
  close();
  EXPECT_EQ(Deallocations::noted,
            (Deallocations::Noted{
                {"MorvaTTPdePanelKV2", 4}, {"MorvaTTViewControllerKV2", 4}, {"MorvaTTCommonInfoKV2", 0}}));
  EXPECT_EQ([host retainCount], hosts);
  EXPECT_EQ([pluginBundle() retainCount], bundles);
}

TEST_F(LifetimeInAHost, EndsWithTheListForEveryObjectOfAHundredPanels) {
  for (int count = 0; count < 100; ++count) {
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
      user::replaceText(box(@"Top"), @"12");
      user::step(stepper(@"Left"), 1);
      user::click(checkBox());
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
    NSArray* const buttons = @[ checkBox(), defaultButton() ];
    NSTextField* const left = box(@"Left");
    NSStepper* const stepsLeft = stepper(@"Left");
    window = nil;
    close();
    for (NSButton* button in buttons) {
      EXPECT_EQ([button target], nil);
      EXPECT_TRUE(user::click(button));
    }
    EXPECT_TRUE(user::replaceText(left, @"1a2"));
    EXPECT_EQ(textOf([left stringValue]), "1a2");
    EXPECT_TRUE(user::step(stepsLeft, 1));
    [open close];
    handleEvents();
  }
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, OfObjectsThatAHostRetainsOutlastsThePanel) {
  id controller = nil;
  id info = nil;
  NSMutableDictionary* margins = nil;
  id read = nil;
  id keywords = nil;
  @autoreleasepool {
    ASSERT_NO_FATAL_FAILURE(open());
    [panel panelView];
    controller = [[panel viewController] retain];
    info = [[panel commonInfo] retain];
    margins = [[info performSelector:@selector(marginInfoDictionary)] retain];
    read = [[info performSelector:@selector(settingInfoDictionary)] retain];
    keywords = [[panel supportedPPDOptionKeys] retain];
    close();
  }
  EXPECT_EQ([[info performSelector:@selector(marginLimit:) withObject:@"Top"] intValue], 20);
  EXPECT_NE([controller performSelector:@selector(tandemTrimView)], nil);
  [controller release];
  [info release];
  EXPECT_EQ([[margins valueForKeyPath:@"Top.Limit"] intValue], 20);
  [margins release];
  for (id other : {read, keywords}) {
    EXPECT_EQ([other retainCount], 1U);
    [other release];
  }
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
    for (const auto& [callback, bundle] : {std::pair<id, id>{nil, nil}, {host, nil}, {nil, pluginBundle()}}) {
      EXPECT_EQ([[NSClassFromString(@"MorvaTTCommonInfoKV2") alloc]
                    performSelector:@selector(initWithCallback:bundle:)
                         withObject:callback
                         withObject:bundle],
                nil);
    }
    EXPECT_EQ(
        [[NSClassFromString(@"MorvaTTViewControllerKV2") alloc] performSelector:@selector(initWithCommonInfo:)
                                                                     withObject:nil],
        nil);
  }
  EXPECT_EQ(living(), before);
}

TEST_F(LifetimeInAHost, EndsForObjectsWhoseInitialiserRaises) {
  id info = [[NSClassFromString(@"MorvaTTCommonInfoKV2") alloc]
      performSelector:@selector(initWithCallback:bundle:)
           withObject:host
           withObject:makeBundleWithout(@"TicketKey", @"MarginTop")];
  const Counts withInfo = living();
  EXPECT_EQ(exceptionOfMaking(@"MorvaTTViewControllerKV2", @selector(initWithCommonInfo:), info, nil),
            "NSInvalidArgumentException");
  EXPECT_EQ(living(), withInfo);
  [info release];
  NSBundle* const withoutAKey = bundle();
  EXPECT_EQ(exceptionOfMaking(@"MorvaTTPdePanelKV2", @selector(initWithCallback:bundle:), host, withoutAKey),
            "NSInvalidArgumentException");
  EXPECT_EQ(exceptionOf([&] { (void)panels(); }), "NSInvalidArgumentException");
  NSBundle* const withoutALimit = makeBundleWithout(@"DefaultValue", @"MarginMax");
  EXPECT_EQ(
      exceptionOfMaking(@"MorvaTTCommonInfoKV2", @selector(initWithCallback:bundle:), host, withoutALimit),
      "NSInvalidArgumentException");
  EXPECT_EQ(living(), before);
}

}  // namespace
}  // namespace host
