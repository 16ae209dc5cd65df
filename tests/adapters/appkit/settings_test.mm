#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

class JobInAHost : public HostedPanelTest {
 protected:
  // Appends unit by unit: given all units at once, the toolkit refuses half a surrogate pair and drops a byte
  // order mark at the beginning.
  [[nodiscard]] static NSString* stringOf(const std::u16string& units) {
    NSMutableString* string = [NSMutableString string];
    for (const unichar unit : units) [string appendFormat:@"%C", unit];
    return string;
  }
  [[nodiscard]] static std::u16string unitsOf(NSString* string) {
    std::u16string units([string length], 0);
    for (NSUInteger index = 0; index < [string length]; ++index)
      units[index] = [string characterAtIndex:index];
    return units;
  }
  // Sets values through the controls, as a user does.
  void setUpAsAUser() {
    ASSERT_TRUE(user::click(titled(@"MorvaTTCheckBoxKV2", localized(@"EnableTandemTrim"))));
    for (NSString* choice in @[ localized(@"ShortEdgeFeed"), localized(@"Right") ]) {
      NSPopUpButton* const choices = titled(@"MorvaTTPopUpButtonKV2", choice);
      ASSERT_TRUE(user::choose(choices, [choices indexOfItemWithTitle:choice])) << textOf(choice);
    }
    ASSERT_TRUE(user::replaceText(box(@"Top"), @"12"));
    ASSERT_TRUE(user::replaceText(box(@"Bottom"), @"x3"));
    ASSERT_TRUE(user::step(stepper(@"Left"), 2));
  }
  const NSDictionary* kExpected = @{
    @"MVTandemTrim" : @"On",
    @"MVImageDirectionPriority" : @"ShortEdgeFeed",
    @"MVPrintPosition" : @"Right",
    @"MVTopMargin" : @"12",
    @"MVBottomMargin" : @"3",
    @"MVLeftMargin" : @"7",
    @"MVRightMargin" : @"5"
  };
};

TEST_F(JobInAHost, HasTheUsersValuesOnceTheyAreSaved) {
  ASSERT_NO_FATAL_FAILURE(show());
  NSDictionary* before = [[[host settings] copy] autorelease];
  ASSERT_NO_FATAL_FAILURE(setUpAsAUser());
  EXPECT_TRUE([[host settings] isEqual:before]);
  EXPECT_TRUE(save());
  EXPECT_TRUE([[host settings] isEqual:kExpected]) << textOf([[host settings] description]);
}

TEST_F(JobInAHost, IsReadFromAndSavedToTheHostsCurrentSettings) {
  ASSERT_NO_FATAL_FAILURE(show());
  NSDictionary* const former = [host replaceSettings];
  store(@"MVTandemTrim", @"On");
  store(@"MVTopMargin", @"12");
  EXPECT_TRUE([panel restoreValuesAndReturnError:nullptr]);
  EXPECT_EQ(textOf([box(@"Top") stringValue]), "12");
  ASSERT_TRUE(user::replaceText(box(@"Top"), @"9"));
  NSDictionary* const shown = [host replaceSettings];
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "9");
  EXPECT_EQ(textOf([shown objectForKey:@"MVTopMargin"]), "12");
  EXPECT_EQ(textOf([former objectForKey:@"MVTopMargin"]), "5");
}

TEST_F(JobInAHost, IsShownAgainByANewPanel) {
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(setUpAsAUser());
  save();
  close();
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ([checkBox() state], NSOnState);
  EXPECT_EQ(textOf([[menu(@"Right") selectedItem] representedObject]), "Right");
  EXPECT_EQ(textOf([[menu(@"ShortEdgeFeed") selectedItem] representedObject]), "ShortEdgeFeed");
  EXPECT_EQ(textOf([box(@"Top") stringValue]), "12");
  EXPECT_EQ([stepper(@"Left") intValue], 7);
  EXPECT_TRUE([box(@"Top") isEnabled]);
}

TEST_F(JobInAHost, IsSummarisedInTheUsersLanguage) {
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(setUpAsAUser());
  save();
  NSArray* order = @[
    localized(@"ImageDirection"), localized(@"InformPrintingPosition"), localized(@"TopMargin"),
    localized(@"BottomMargin"), localized(@"LeftMargin"), localized(@"RightMargin")
  ];
  NSArray* values = @[ localized(@"ShortEdgeFeed"), localized(@"Right"), @"12", @"3", @"7", @"5" ];
  NSMutableDictionary* expected = [NSMutableDictionary dictionaryWithObjects:values forKeys:order];
  [expected setObject:order forKey:@"Summary Display Order"];
  EXPECT_TRUE([[panel summaryInfo] isEqual:expected]) << textOf([[panel summaryInfo] description]);
  EXPECT_NE([panel summaryInfo], [panel summaryInfo]);
}

TEST_F(JobInAHost, IsSummarisedAsOffWhileTheFunctionIsOff) {
  ASSERT_NO_FATAL_FAILURE(open());
  NSDictionary* expected = [NSDictionary dictionaryWithObject:localized(@"Off")
                                                       forKey:localized(@"EnableTandemTrim")];
  EXPECT_TRUE([[panel summaryInfo] isEqual:expected]) << textOf([[panel summaryInfo] description]);
  EXPECT_NE([panel summaryInfo], [panel summaryInfo]);
}

TEST_F(JobInAHost, KeepsItsSwitchWhenTheDefaultsAreRestored) {
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(setUpAsAUser());
  EXPECT_TRUE(user::click(titled(@"MorvaTTButtonKV2", localized(@"RestoreDefault"))));
  save();
  NSMutableDictionary* expected = [NSMutableDictionary dictionaryWithDictionary:(@{
                                                         @"MVTandemTrim" : @"On",
                                                         @"MVImageDirectionPriority" : @"LongEdgeFeed",
                                                         @"MVPrintPosition" : @"Center"
                                                       })];
  for (NSString* key in @[ @"MVTopMargin", @"MVBottomMargin", @"MVLeftMargin", @"MVRightMargin" ])
    [expected setObject:@"5" forKey:key];
  EXPECT_TRUE([[host settings] isEqual:expected]) << textOf([[host settings] description]);
}

// A box of the toolkit shows the number's own text.
TEST_F(JobInAHost, MayContainNumbersWhereThePanelStoresTexts) {
  for (NSNumber* number in @[ @12, @-7, @2.5, @0.1, @1e20, @(true), [NSNumber numberWithFloat:12.3F] ]) {
    [[host settings] setObject:number forKey:@"MVTopMargin"];
    ASSERT_NO_FATAL_FAILURE(show());
    EXPECT_EQ(textOf([box(@"Top") stringValue]), textOf([number stringValue]));
    save();
    EXPECT_EQ(textOf(stored(@"MVTopMargin")), textOf([number stringValue]));
    close();
  }
}

TEST_F(JobInAHost, KeepsAnUneditedMarginTextUnitForUnit) {
  const std::vector<std::u16string> texts{u"",
                                          u" 7",
                                          u"012",
                                          u"12.5 mm",
                                          u"\uFEFF12",
                                          u"\uFFFE",
                                          u"e\u0301",
                                          u"\u00E9",
                                          {u'1', 0, u'2'},
                                          u"\U0001F600",
                                          {0xD83D},
                                          {u'1', 0xDE00, u'2'},
                                          {0xDE00, 0xD83D},
                                          {0xFEFF, 0xD83D}};
  for (const bool isFocused : {false, true}) {
    for (const auto& units : texts) {
      store(@"MVTopMargin", stringOf(units));
      ASSERT_NO_FATAL_FAILURE(showOn());
      if (isFocused) [window makeFirstResponder:box(@"Top")];
      save();
      EXPECT_EQ(unitsOf(stored(@"MVTopMargin")), units) << testing::PrintToString(units);
      EXPECT_EQ(unitsOf([[panel summaryInfo] objectForKey:localized(@"TopMargin")]), units);
      close();
    }
  }
}

TEST_F(JobInAHost, LosesAChoiceThatNoItemHas) {
  store(@"MVTandemTrim", @"On");
  store(@"MVPrintPosition", @"Nowhere");
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ([menu(@"Right") selectedItem], nil);
  save();
  EXPECT_EQ(stored(@"MVPrintPosition"), nil);
}

}  // namespace
}  // namespace host
