#include <functional>

#import "tests/platform/appkit/hosted_panel_test.h"

namespace host {
namespace {

NSString* const kSettingInfo = @"TandemTrimKV2-SettingInfo.plist";

/// The plug-in with a bundle whose resources a test has damaged.
class DamagedResources : public HostedPanelTest {
 protected:
  DamagedResources()
      : folder_([NSTemporaryDirectory() stringByAppendingPathComponent:@"damaged/TandemTrim.bundle"]) {
    NSFileManager* files = [NSFileManager defaultManager];
    NSString* good = [NSString stringWithUTF8String:std::getenv("TANDEM_TRIM_BUNDLE")];
    [files removeItemAtPath:[folder_ stringByDeletingLastPathComponent] error:nullptr];
    [files createDirectoryAtPath:[folder_ stringByDeletingLastPathComponent]
        withIntermediateDirectories:YES
                         attributes:nil
                              error:nullptr];
    [files copyItemAtPath:good toPath:folder_ error:nullptr];
  }

  [[nodiscard]] NSString* resource(NSString* name) {
    return
        [folder_ stringByAppendingPathComponent:[@"Contents/Resources" stringByAppendingPathComponent:name]];
  }
  void write(NSString* name, NSData* content) { [content writeToFile:resource(name) atomically:NO]; }
  void remove(NSString* name) {
    [[NSFileManager defaultManager] removeItemAtPath:resource(name) error:nullptr];
  }
  /// The setting info with one entry changed, or left out for nil.
  void change(NSString* mainKey, NSString* key, id value) {
    NSMutableDictionary* info = [NSMutableDictionary dictionaryWithContentsOfFile:resource(kSettingInfo)];
    NSMutableDictionary* part = [NSMutableDictionary dictionaryWithDictionary:[info objectForKey:mainKey]];
    [part removeObjectForKey:key];
    if (value != nil) [part setObject:value forKey:key];
    [info setObject:part forKey:mainKey];
    write(kSettingInfo, [NSPropertyListSerialization dataFromPropertyList:info
                                                                   format:NSPropertyListXMLFormat_v1_0
                                                         errorDescription:nullptr]);
  }
  [[nodiscard]] NSArray* panels() {
    [plugin initWithBundle:openBundle(folder_, NSTemporaryDirectory())];
    return [plugin PDEPanelsForType:kPrintDialogType withHostInfo:host];
  }

 private:
  NSString* folder_;
};

NSData* dataOf(const char* bytes) { return [NSData dataWithBytes:bytes length:strlen(bytes)]; }

TEST_F(DamagedResources, AreGoodAtFirst) { EXPECT_EQ([panels() count], 1U); }

TEST_F(DamagedResources, WithoutASettingInfoGiveNoPanel) {
  remove(kSettingInfo);
  EXPECT_EQ(panels(), nil);
  EXPECT_EQ([[host settings] count], 0U);
}

TEST_F(DamagedResources, WithASettingInfoThatIsNoDictionaryGiveNoPanel) {
  for (const char* content :
       {"", "<plist", "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>ID</key>",
        "\xFF\xFE\x00garbage",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><array><string>ID</string></array></plist>"}) {
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

TEST_F(DamagedResources, WithAMarginDefaultThatIsNoNumberRaiseTheToolkitsInvalidArgument) {
  change(@"DefaultValue", @"MarginTop", @[ @5 ]);
  EXPECT_EQ(exceptionOf([&] { (void)panels(); }), "NSInvalidArgumentException");
}

TEST_F(DamagedResources, WithoutAWordingKeepTheViewFromComingUpAndNothingElse) {
  change(@"Wording", @"MinLabelForValueRange", nil);
  id<HostedPanel> unshown = [panels() objectAtIndex:0];
  EXPECT_EQ(exceptionOf([&] { [unshown panelView]; }), "NSInvalidArgumentException");
  EXPECT_TRUE([unshown restoreValuesAndReturnError:nullptr]);
  EXPECT_TRUE([unshown saveValuesAndReturnError:nullptr]);
  EXPECT_EQ([[unshown summaryInfo] count], 1U);
}

TEST_F(DamagedResources, WithoutStringTablesSpeakInKeys) {
  for (NSString* name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:resource(@"")
                                                                             error:nullptr]) {
    if ([[name pathExtension] isEqual:@"lproj"]) remove(name);
  }
  id<HostedPanel> silent = [panels() objectAtIndex:0];
  EXPECT_EQ(textOf([silent panelName]), "TandemTrim");
  EXPECT_EQ(textOf([[silent summaryInfo] objectForKey:@"EnableTandemTrim"]), "Off");
  EXPECT_NE([silent panelView], nil);
}

TEST_F(DamagedResources, WithBrokenStringTablesSpeakInKeys) {
  for (NSString* name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:resource(@"")
                                                                             error:nullptr]) {
    if ([[name pathExtension] isEqual:@"lproj"])
      write([name stringByAppendingPathComponent:@"Localizable.strings"],
            dataOf("\"TandemTrim\" = \"unfinished"));
  }
  EXPECT_EQ(textOf([[panels() objectAtIndex:0] panelName]), "TandemTrim");
}

TEST_F(DamagedResources, InAPrintersPpdAreMadeUpForByTheSettingInfo) {
  TestHost* const bare = [[[TestHost alloc] initWithPPD:nil] autorelease];
  id<HostedPanel> limited = [[plugin PDEPanelsForType:kPrintDialogType withHostInfo:bare] objectAtIndex:0];
  id info = [limited commonInfo];
  EXPECT_EQ([[info performSelector:@selector(marginLimit:) withObject:@"Top"] intValue], 10);
}

}  // namespace
}  // namespace host
