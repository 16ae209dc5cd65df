#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

/// The operations of the objects that a host reaches from a panel.
class ObjectsInAHost : public HostedPanelTest {
 protected:
  void SetUp() override { showOn(); }
  [[nodiscard]] id info() { return [panel commonInfo]; }
  [[nodiscard]] id ask(NSString* operation) {
    return [info() performSelector:NSSelectorFromString(operation)];
  }
  [[nodiscard]] id ask(NSString* operation, NSString* argument) {
    return [info() performSelector:NSSelectorFromString(operation) withObject:argument];
  }
};

TEST_F(ObjectsInAHost, ReturnTheSameObjectsThatWereReadFromTheSettingInfo) {
  NSDictionary* read = ask(@"settingInfoDictionary");
  EXPECT_EQ(ask(@"settingInfoDictionary"), read);
  EXPECT_FALSE([read isKindOfClass:[NSMutableDictionary class]]);
  EXPECT_TRUE([[info() valueForKey:@"isReady"] boolValue]);
  for (const auto& [operation, mainKey, key] :
       {std::tuple{@"defaultValid", @"DefaultValue", @"Valid"},
        {@"defaultImageDirection", @"DefaultValue", @"ImageDirection"},
        {@"defaultPosition", @"DefaultValue", @"Position"},
        {@"defaultMarginMin", @"DefaultValue", @"MarginMin"},
        {@"defaultMarginMax", @"DefaultValue", @"MarginMax"},
        {@"defaultMarginLimit", @"DefaultValue", @"MarginLimit"},
        {@"panelKindID", @"ID", @"PanelKind"},
        {@"ticketKeyValid", @"TicketKey", @"Valid"},
        {@"ticketKeyImageDirection", @"TicketKey", @"ImageDirection"},
        {@"ticketKeyPosition", @"TicketKey", @"Position"},
        {@"minLabelForIntegerValueRange", @"Wording", @"MinLabelForValueRange"},
        {@"maxLabelForIntegerValueRange", @"Wording", @"MaxLabelForValueRange"}}) {
    EXPECT_NE(ask(operation), nil) << textOf(operation);
    EXPECT_EQ(ask(operation), [[read objectForKey:mainKey] objectForKey:key]) << textOf(operation);
  }
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    NSString* key = [@"Margin" stringByAppendingString:side];
    EXPECT_EQ(ask(@"defaultMarginValue:", side), [[read objectForKey:@"DefaultValue"] objectForKey:key]);
    EXPECT_EQ(ask(@"ticketKeyMargin:", side), [[read objectForKey:@"TicketKey"] objectForKey:key]);
  }
}

TEST_F(ObjectsInAHost, KnowFourMarginsByTheirNames) {
  NSMutableDictionary* margins = ask(@"marginInfoDictionary");
  EXPECT_EQ([margins count], 4U);
  EXPECT_EQ(ask(@"marginInfoDictionary"), margins);
  for (const auto& [side, limit] : {std::pair{@"Top", 20}, {@"Bottom", 30}, {@"Left", 15}, {@"Right", 25}}) {
    NSNumber* given = ask(@"marginLimit:", side);
    EXPECT_EQ([given intValue], limit) << textOf(side);
    EXPECT_EQ(given, [[margins objectForKey:side] objectForKey:@"Limit"]) << textOf(side);
  }
  for (NSString* name in @[ @"top", @"MarginTop", @"" ]) {
    EXPECT_EQ(ask(@"marginLimit:", name), nil) << textOf(name);
    EXPECT_EQ(ask(@"defaultMarginValue:", name), nil) << textOf(name);
    EXPECT_EQ(ask(@"ticketKeyMargin:", name), nil) << textOf(name);
  }
  EXPECT_EQ(ask(@"marginLimit:", nil), nil);
}

class MarginInfoInAHost : public ObjectsInAHost {
 protected:
  void SetUp() override {
    store(@"MVTandemTrim", @"On");
    open();
    margins = ask(@"marginInfoDictionary");
  }
  NSMutableDictionary* margins = nil;
};

TEST_F(MarginInfoInAHost, IsTheSourceOfTheLimits) {
  NSNumber* const seventeen = [NSNumber numberWithInt:17];
  [margins setObject:[NSDictionary dictionaryWithObject:seventeen forKey:@"Limit"] forKey:@"Top"];
  EXPECT_EQ(ask(@"marginLimit:", @"Top"), seventeen);
  EXPECT_EQ([[ask(@"marginInfoDictionary") objectForKey:@"Top"] objectForKey:@"Limit"], seventeen);
  [margins setObject:@{@"Limit" : @3} forKey:@"Inner"];
  EXPECT_EQ([ask(@"marginLimit:", @"Inner") intValue], 3);
  [margins setObject:@{} forKey:@"Left"];
  [margins removeObjectForKey:@"Right"];
  for (NSString* name in @[ @"Left", @"Right" ]) EXPECT_EQ(ask(@"marginLimit:", name), nil) << textOf(name);
  EXPECT_EQ([margins count], 4U);
  [margins removeAllObjects];
  EXPECT_EQ(ask(@"marginLimit:", @"Top"), nil);
}

TEST_F(MarginInfoInAHost, AppliesToAViewThatIsSetUpLater) {
  NSNumber* const seventeen = [NSNumber numberWithInt:17];
  [margins setObject:[NSDictionary dictionaryWithObject:seventeen forKey:@"Limit"] forKey:@"Top"];
  [panel panelView];
  EXPECT_EQ([box(@"Top") valueForKey:@"max"], seventeen);
  EXPECT_EQ([stepper(@"Top") maxValue], 17);
  EXPECT_EQ([stepper(@"Bottom") maxValue], 30);
}

TEST_F(MarginInfoInAHost, IgnoresLaterChangesOfAnEntryThatWasSet) {
  NSMutableDictionary* const entry = [NSMutableDictionary dictionaryWithObject:@3 forKey:@"Limit"];
  [margins setObject:entry forKey:@"Top"];
  [entry setObject:@4 forKey:@"Limit"];
  EXPECT_EQ([[margins valueForKeyPath:@"Top.Limit"] intValue], 3);
  EXPECT_EQ([ask(@"marginLimit:", @"Top") intValue], 3);
  for (NSString* side in margins) {
    EXPECT_FALSE([[margins objectForKey:side] isKindOfClass:[NSMutableDictionary class]]) << textOf(side);
  }
}

TEST_F(MarginInfoInAHost, IsADictionaryLikeAnyOther) {
  NSDictionary* const expected = @{
    @"Top" : @{@"Limit" : @20},
    @"Bottom" : @{@"Limit" : @30},
    @"Left" : @{@"Limit" : @15},
    @"Right" : @{@"Limit" : @25}
  };
  EXPECT_TRUE([margins isKindOfClass:[NSMutableDictionary class]]);
  EXPECT_TRUE([margins isEqual:expected]);
  EXPECT_TRUE([[[margins copy] autorelease] isEqual:expected]);
  NSMutableArray* names = [NSMutableArray array];
  for (NSString* name in margins) [names addObject:name];
  EXPECT_EQ([names count], 4U);
  EXPECT_TRUE([[NSSet setWithArray:names] isEqual:[NSSet setWithArray:[expected allKeys]]]);
  NSMutableDictionary* const other = [[margins mutableCopy] autorelease];
  [other removeAllObjects];
  EXPECT_EQ([margins count], 4U);
  NSNumber* const five = @5;
  EXPECT_EQ([margins objectForKey:static_cast<id>(five)], nil);
  [margins removeObjectForKey:static_cast<id>(five)];
  for (const auto& [entry, name] : {std::pair<id, id>{nil, @"Top"}, {five, nil}, {five, five}}) {
    EXPECT_EQ(exceptionOf([&, entry = entry, name = name] { [margins setObject:entry forKey:name]; }),
              "NSInvalidArgumentException");
  }
  EXPECT_TRUE([margins isEqual:expected]);
}

TEST_F(ObjectsInAHost, ReturnTheBundleTheHostAndItsPrintSettings) {
  EXPECT_EQ(ask(@"bundle"), pluginBundle());
  EXPECT_EQ(ask(@"callback"), host);
  EXPECT_EQ(reinterpret_cast<PMPrintSettings>(ask(@"currentPrintSettings")), [host printSettings]);
  EXPECT_EQ(textOf(ask(@"localizedString:", @"Left")), textOf(localized(@"Left")));
  EXPECT_EQ(textOf(ask(@"localizedString:", @"no such key")), "no such key");
}

TEST_F(ObjectsInAHost, RestoreSaveAndSummariseAsThePanelDoes) {
  id const controller = [panel viewController];
  const auto succeeds = [&](NSString* operation) { return [[controller valueForKey:operation] boolValue]; };
  store(@"MVTandemTrim", @"Off");
  store(@"MVTopMargin", @"12");
  EXPECT_TRUE(succeeds(@"restoreNonPPDSettingsFromPrintSettings"));
  EXPECT_EQ(textOf([box(@"Top") stringValue]), "12");
  EXPECT_TRUE([box(@"Top") isEnabled]);
  [controller performSelector:@selector(updateView)];
  EXPECT_FALSE([box(@"Top") isEnabled]);
  ASSERT_TRUE(user::click(checkBox()));
  ASSERT_TRUE(user::replaceText(box(@"Top"), @"9"));
  EXPECT_TRUE(succeeds(@"saveNonPPDSettingsToPrintSettings"));
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "9");
  NSDictionary* const summary = [controller performSelector:@selector(summaryInfoWithDispOrderKey:)
                                                 withObject:@"Order"];
  EXPECT_EQ([summary count], 7U);
  EXPECT_TRUE(
      [[summary objectForKey:@"Order"] isEqual:[[panel summaryInfo] objectForKey:@"Summary Display Order"]]);
  [controller setValue:[NSNumber numberWithBool:NO] forKey:@"viewIsInited"];
  store(@"MVTopMargin", @"3");
  EXPECT_TRUE(succeeds(@"restoreNonPPDSettingsFromPrintSettings"));
  EXPECT_EQ(textOf([box(@"Top") stringValue]), "9");
  EXPECT_TRUE(succeeds(@"saveNonPPDSettingsToPrintSettings"));
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "3");
  // Only a controller whose view is set up unsubscribes when it ends.
  [controller setValue:[NSNumber numberWithBool:YES] forKey:@"viewIsInited"];
}

TEST_F(ObjectsInAHost, UseTheSameNumberObjectsAsBoundsOfABox) {
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    EXPECT_EQ([box(side) valueForKey:@"min"], ask(@"defaultMarginMin")) << textOf(side);
    EXPECT_EQ([box(side) valueForKey:@"max"], ask(@"marginLimit:", side)) << textOf(side);
  }
  id top = box(@"Top");
  const auto verify = [&](NSNumber* value) {
    return [top performSelector:@selector(verifyValue:) withObject:value];
  };
  NSNumber* inside = [NSNumber numberWithInt:12];
  EXPECT_EQ(verify(inside), inside);
  EXPECT_EQ(verify(@-1), ask(@"defaultMarginMin"));
  EXPECT_EQ(verify(@1000), ask(@"marginLimit:", @"Top"));
  EXPECT_EQ([verify(nil) intValue], 0);
  NSNumber* const low = @100;
  NSNumber* const high = @50;
  [top performSelector:@selector(setValueRange:max:) withObject:low withObject:high];
  EXPECT_EQ(verify(@99), low);
  EXPECT_EQ(verify(@100), high);
}

TEST_F(ObjectsInAHost, FormatNumbersAsPlainIntegersAndReadAnyText) {
  NSNumberFormatter* formatter =
      [[[NSClassFromString(@"MorvaTTDecimalFormatterKV2") alloc] init] autorelease];
  [formatter setFormat:@"#,##0.00"];
  for (const auto& [object, text] : {std::pair<id, const char*>{@42, "42"},
                                     {@-7, "-7"},
                                     {@1234567, "1234567"},
                                     {@3.9, "3"},
                                     {nil, "0"},
                                     {@"12abc", "12"},
                                     {@"abc", "0"}}) {
    EXPECT_EQ(textOf([formatter stringForObjectValue:object]), text);
  }
  for (const auto& [text, number] : {std::pair<NSString*, long long>{@"abc", 0},
                                     {@"12abc", 12},
                                     {@"3.9", 3},
                                     {@"-4", -4},
                                     {@" \t8", 8},
                                     {@"+5", 5},
                                     {@"", 0},
                                     {nil, 0},
                                     {@"99999999999999999999", 9223372036854775807LL}}) {
    id object = nil;
    NSString* error = @"untouched";
    EXPECT_TRUE([formatter getObjectValue:&object forString:text errorDescription:&error]);
    EXPECT_EQ([object longLongValue], number) << textOf(text);
    EXPECT_EQ(textOf(error), "untouched");
  }
  EXPECT_TRUE([formatter getObjectValue:nullptr forString:@"1" errorDescription:nullptr]);
}

}  // namespace
}  // namespace host
