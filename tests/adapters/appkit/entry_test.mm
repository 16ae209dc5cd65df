#import "tests/adapters/appkit/support/hosted_panel_test.h"
#import "tests/adapters/appkit/support/replacing.h"

namespace host {
namespace {

class MarginEntryInAHost : public HostedPanelTest {
 protected:
  [[nodiscard]] std::string text(NSString* side) { return textOf([box(side) stringValue]); }
};

// Counts the calls of the view controller's handler of text changes.
int handled = 0;
IMP original = nullptr;

void countAndHandle(id self, SEL selector, NSNotification* notification) {
  ++handled;
  reinterpret_cast<void (*)(id, SEL, NSNotification*)>(original)(self, selector, notification);
}

class Counting : public Replacing {
 public:
  Counting()
      : Replacing(@"MorvaTTViewControllerKV2", @selector(controlTextDidChange:),
                  reinterpret_cast<IMP>(countAndHandle), "v@:@") {
    handled = 0;
    original = before();
  }
};

void refuseOnTheLeft(id self, SEL /*selector*/, double /*value*/) {
  if ([[self valueForKey:@"identifier"] isEqual:@"Left"])
    [NSException raise:NSGenericException format:@"refused"];
}

// Shows numbers as a text cell does on a Mac whose region writes Arabic digits. GNUstep's runtime replaces
// the method of every class of cells, so this changes text cells only.
void showNumbersInArabicDigits(id self, SEL selector, id value) {
  NSMutableString* digits = [NSMutableString string];
  if ([self isKindOfClass:[NSTextFieldCell class]] && [value isKindOfClass:[NSNumber class]]) {
    for (const char digit : std::to_string([value intValue]))
      [digits appendFormat:@"%C", static_cast<unichar>(0x0660 + (digit - '0'))];
    value = digits;
  }
  reinterpret_cast<void (*)(id, SEL, id)>(original)(self, selector, value);
}

TEST_F(MarginEntryInAHost, StepsInPlainDigitsWhereTheRegionWritesOthers) {
  const Replacing region(@"NSTextFieldCell", @selector(setObjectValue:),
                         reinterpret_cast<IMP>(showNumbersInArabicDigits), "v@:@");
  original = region.before();
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ])
    store([NSString stringWithFormat:@"MV%@Margin", side], @"11");
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    user::step(stepper(side), 1);
    EXPECT_EQ(text(side), "12") << textOf(side);
  }
  ASSERT_TRUE(save());
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ])
    EXPECT_EQ(textOf(stored([NSString stringWithFormat:@"MV%@Margin", side])), "12");
}

TEST_F(MarginEntryInAHost, KeepsARestoredTextInOtherDigits) {
  store(@"MVTopMargin", @"١٢");
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(text(@"Top"), "١٢");
  ASSERT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "١٢");
}

TEST_F(MarginEntryInAHost, WritesInPlainDigitsANumberFromAnotherControl) {
  NSTextField* const taking = [[[NSClassFromString(@"MorvaTTTextBoxKV2") alloc] init] autorelease];
  NSTextField* const given = [[[NSTextField alloc] init] autorelease];
  for (const auto& [number, expected] :
       {std::pair{@"0", "0"}, std::pair{@"20", "20"}, std::pair{@"2147483647", "2147483647"},
        std::pair{@"7.9", "7"}, std::pair{@"-7", "-7"}}) {
    [given setStringValue:number];
    [taking takeIntValueFrom:given];
    EXPECT_EQ(textOf([taking stringValue]), expected);
  }
}

TEST_F(MarginEntryInAHost, CorrectsEachEditAndUpdatesTheStepper) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    const int limit = static_cast<int>([stepper(side) maxValue]);
    for (const auto& [typed, expected] :
         {std::pair{@"1a2", std::min(12, limit)}, std::pair{@"007", 7}, std::pair{@"", 0},
          std::pair{@"-5", 5}, std::pair{@"９9", 9}, std::pair{@"99999999999999999999", limit}}) {
      EXPECT_TRUE(user::replaceText(box(side), typed));
      EXPECT_EQ(text(side), std::to_string(expected)) << textOf(side) << ": " << textOf(typed);
      EXPECT_EQ([stepper(side) intValue], expected) << textOf(side) << ": " << textOf(typed);
    }
  }
}

TEST_F(MarginEntryInAHost, RunsTheHandlerOnceForEachEditAndForNoOtherChange) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const Counting counting;
  user::replaceText(box(@"Top"), @"2");
  EXPECT_EQ(handled, 1);
  user::type(box(@"Left"), @"34");
  EXPECT_EQ(handled, 3);
  user::backspace(box(@"Left"));
  EXPECT_EQ(handled, 4);
  user::step(stepper(@"Left"), 1);
  user::click(defaultButton());
  [panel willShow];
  EXPECT_EQ(handled, 4);
}

TEST_F(MarginEntryInAHost, SubscribesOnceForAllRequestsForTheViewUntilThePanelEnds) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const Counting counting;
  NSTextField* const kept = [[box(@"Top") retain] autorelease];
  [panel panelView];
  [panel panelView];
  [[NSNotificationCenter defaultCenter] postNotificationName:NSControlTextDidChangeNotification object:kept];
  EXPECT_EQ(handled, 1);
  close();
  [[NSNotificationCenter defaultCenter] postNotificationName:NSControlTextDidChangeNotification object:kept];
  EXPECT_EQ(handled, 1);
}

TEST_F(MarginEntryInAHost, LeavesNoSubscriptionWhereSetUpFails) {
  ASSERT_NO_FATAL_FAILURE(open());
  {
    const Replacing method(@"MorvaTTStepperKV2", @selector(setMaxValue:),
                           reinterpret_cast<IMP>(refuseOnTheLeft), "v@:d");
    EXPECT_EQ(exceptionOf([&] { [panel panelView]; }), "NSGenericException");
  }
  const Counting counting;
  for (NSString* name in @[ @"textBoxMarginTop", @"textBoxMarginBottom", @"textBoxMarginLeft" ]) {
    id const unused = [[panel viewController] performSelector:NSSelectorFromString(name)];
    EXPECT_NE(unused, nil) << textOf(name);
    [[NSNotificationCenter defaultCenter] postNotificationName:NSControlTextDidChangeNotification
                                                        object:unused];
  }
  EXPECT_EQ(handled, 0);
}

TEST_F(MarginEntryInAHost, KeepsTheInsertionPointWhereTheTextStaysAsTyped) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  user::replaceText(box(@"Top"), @"5");
  NSText* editor = [box(@"Top") currentEditor];
  [editor setSelectedRange:NSMakeRange(0, 0)];
  [static_cast<NSTextView*>(editor) insertText:@"1"];
  EXPECT_EQ(text(@"Top"), "15");
  EXPECT_EQ([editor selectedRange].location, 1U);
  [static_cast<NSTextView*>(editor) insertText:@"x"];
  EXPECT_EQ(text(@"Top"), "15");
  EXPECT_EQ([editor selectedRange].location, 2U);
}

TEST_F(MarginEntryInAHost, ContinuesFromTheSteppersValue) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  user::replaceText(box(@"Top"), @"7");
  user::step(stepper(@"Top"), 2);
  EXPECT_EQ(text(@"Top"), "9");
  user::backspace(box(@"Top"));
  EXPECT_EQ(text(@"Top"), "0");
  user::type(box(@"Top"), @"3");
  EXPECT_EQ([stepper(@"Top") intValue], 3);
}

TEST_F(MarginEntryInAHost, CorrectsATextBoxThatIsNotAMarginAndChangesNoMargin) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  NSTextField* other = [[[NSClassFromString(@"MorvaTTTextBoxKV2") alloc] init] autorelease];
  [other setValue:@3 forKey:@"min"];
  [other setValue:@8 forKey:@"max"];
  [other setStringValue:@"x9"];
  id owner = [panel viewController];
  NSNotification* note = [NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                       object:other];
  [owner performSelector:@selector(controlTextDidChange:) withObject:note];
  EXPECT_EQ(textOf([other stringValue]), "8");
  EXPECT_EQ(text(@"Top"), "5");
}

TEST_F(MarginEntryInAHost, IgnoresNotificationsFromAnythingButTextBoxes) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  NSTextField* const label = view(@"MorvaTTTextLabelKV2");
  NSString* const shown = [[[label stringValue] copy] autorelease];
  for (id other : {static_cast<id>(nil), static_cast<id>(label), static_cast<id>(stepper(@"Top")),
                   static_cast<id>(@"no control")}) {
    [[panel viewController]
        performSelector:@selector(controlTextDidChange:)
             withObject:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                      object:other]];
  }
  EXPECT_EQ(textOf([label stringValue]), textOf(shown));
  EXPECT_EQ(text(@"Top"), "5");
}

}  // namespace
}  // namespace host
