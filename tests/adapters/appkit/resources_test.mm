#include <functional>
#include <string_view>

#import "tests/adapters/appkit/support/damaged_resources.h"

namespace host {
namespace {

using namespace std::string_view_literals;

NSData* dataOf(std::string_view bytes) { return [NSData dataWithBytes:bytes.data() length:bytes.size()]; }

TEST_F(DamagedResources, AreIntactAtFirstInASeparateBundle) {
  EXPECT_EQ([panels() count], 1U);
  EXPECT_NE([plugin bundle], pluginBundle());
  NSBundle* const first = [plugin bundle];
  (void)panels();
  EXPECT_NE([plugin bundle], first);
}

TEST_F(DamagedResources, WithoutASettingInfoMakeNoPanel) {
  remove(kSettingInfo);
  EXPECT_EQ(panels(), nil);
  EXPECT_EQ([[host settings] count], 0U);
}

TEST_F(DamagedResources, WithASettingInfoThatIsNotADictionaryMakeNoPanel) {
  for (const auto content :
       {""sv, "<plist"sv, "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>ID</key>"sv,
        "\xFF\xFE\x00garbage"sv,
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><string>ID</string></array></plist>"sv}) {
    write(kSettingInfo, dataOf(content));
    EXPECT_EQ(panels(), nil) << content;
  }
}

TEST_F(DamagedResources, WithoutADefaultOrAKeyRaiseTheToolkitsInvalidArgument) {
  for (const auto& [mainKey, key] : {std::pair{@"DefaultValue", @"Valid"},
                                     {@"DefaultValue", @"MarginLeft"},
                                     {@"TicketKey", @"Position"},
                                     {@"TicketKey", @"MarginTop"}}) {
    NSData* good = [NSData dataWithContentsOfFile:resource(kSettingInfo)];
    change(mainKey, key, nil);
    EXPECT_EQ(exceptionOf([&] { (void)panels(); }), "NSInvalidArgumentException") << textOf(key);
    write(kSettingInfo, good);
  }
  EXPECT_EQ([[host settings] count], 0U);
}

TEST_F(DamagedResources, WithAMarginDefaultThatIsNotANumberRaiseTheToolkitsInvalidArgument) {
  change(@"DefaultValue", @"MarginTop", @[ @5 ]);
  EXPECT_EQ(exceptionOf([&] { (void)panels(); }), "NSInvalidArgumentException");
}

// A missing bound counts as 0, but cannot be the limit itself. Without a PPD file the limit is the property
// list's, and if that is missing too, the minimum.
TEST_F(DamagedResources, WithoutABoundRaiseOnlyWhereTheBoundIsTheLimit) {
  struct Bounds {
    NSNumber* min;
    NSNumber* max;
    NSNumber* limit;
    id expected;
  };
  useNoPpd();
  for (const auto& [min, max, limit, expected] : {Bounds{nil, @50, @17, @17},
                                                  {nil, @50, @0, @0},
                                                  {nil, @50, @60, @50},
                                                  {nil, @50, @-1, nil},
                                                  {nil, @50, nil, nil},
                                                  {@-5, nil, @-1, @-1},
                                                  {@-5, nil, @-6, @-5},
                                                  {@-5, nil, @0, @0},
                                                  {@-5, nil, nil, @-5},
                                                  {@-5, nil, @1, nil},
                                                  {nil, nil, @0, @0},
                                                  {nil, nil, @1, nil}}) {
    change(@"DefaultValue", @"MarginMin", min);
    change(@"DefaultValue", @"MarginMax", max);
    change(@"DefaultValue", @"MarginLimit", limit);
    NSArray* made = nil;
    const auto raised = exceptionOf([&] { made = panels(); });
    EXPECT_EQ(raised, expected == nil ? "NSInvalidArgumentException" : "");
    if (made == nil) continue;
    id info = [[made objectAtIndex:0] commonInfo];
    EXPECT_EQ([[info performSelector:@selector(marginLimit:) withObject:@"Top"] intValue],
              [expected intValue]);
    EXPECT_EQ([info performSelector:@selector(defaultMarginMin)] == nil, min == nil);
  }
}

// The toolkit shares one object for each small number, so these are large.
TEST_F(DamagedResources, WithOtherBoundsReturnTheSameNumberObjectsEachTime) {
  change(@"DefaultValue", @"MarginMin", @1017);
  change(@"DefaultValue", @"MarginMax", @1019);
  change(@"DefaultValue", @"MarginLimit", @1018);
  useNoPpd();
  id<HostedPanel> bounded = [panels() objectAtIndex:0];
  id info = [bounded commonInfo];
  [bounded panelView];
  id top = [[bounded viewController] performSelector:@selector(textBoxMarginTop)];
  NSDictionary* const read =
      [[info performSelector:@selector(settingInfoDictionary)] objectForKey:@"DefaultValue"];
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ([info performSelector:@selector(defaultMarginMin)], [read objectForKey:@"MarginMin"]);
    EXPECT_EQ([info performSelector:@selector(marginLimit:) withObject:@"Top"],
              [read objectForKey:@"MarginLimit"]);
    EXPECT_EQ([top performSelector:@selector(verifyValue:) withObject:@1000],
              [read objectForKey:@"MarginMin"]);
    EXPECT_EQ([top performSelector:@selector(verifyValue:) withObject:@1020],
              [read objectForKey:@"MarginLimit"]);
  }
}

TEST_F(DamagedResources, WithoutAWordingPreventOnlyTheView) {
  change(@"Wording", @"MinLabelForValueRange", nil);
  id<HostedPanel> unshown = [panels() objectAtIndex:0];
  EXPECT_EQ(exceptionOf([&] { [unshown panelView]; }), "NSInvalidArgumentException");
  EXPECT_TRUE([unshown restoreValuesAndReturnError:nullptr]);
  EXPECT_TRUE([unshown saveValuesAndReturnError:nullptr]);
  EXPECT_EQ([[unshown summaryInfo] count], 1U);
}

TEST_F(DamagedResources, WithoutStringTablesShowKeys) {
  for (NSString* name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:resource(@"")
                                                                             error:nullptr]) {
    if ([[name pathExtension] isEqual:@"lproj"]) remove(name);
  }
  id<HostedPanel> silent = [panels() objectAtIndex:0];
  EXPECT_EQ(textOf([silent panelName]), "TandemTrim");
  EXPECT_EQ(textOf([[silent summaryInfo] objectForKey:@"EnableTandemTrim"]), "Off");
  EXPECT_NE([silent panelView], nil);
}

TEST_F(DamagedResources, WithBrokenStringTablesShowKeys) {
  for (NSString* name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:resource(@"")
                                                                             error:nullptr]) {
    if ([[name pathExtension] isEqual:@"lproj"])
      write([name stringByAppendingPathComponent:@"Localizable.strings"],
            dataOf("\"TandemTrim\" = \"unfinished"));
  }
  EXPECT_EQ(textOf([[panels() objectAtIndex:0] panelName]), "TandemTrim");
}

TEST_F(DamagedResources, WithoutAPpdTakeTheLimitFromTheSettingInfo) {
  TestHost* const bare = [[[TestHost alloc] initWithPPD:nil] autorelease];
  id<HostedPanel> limited = [[plugin PDEPanelsForType:kPrintDialogType withHostInfo:bare] objectAtIndex:0];
  id info = [limited commonInfo];
  EXPECT_EQ([[info performSelector:@selector(marginLimit:) withObject:@"Top"] intValue], 10);
}

}  // namespace
}  // namespace host
