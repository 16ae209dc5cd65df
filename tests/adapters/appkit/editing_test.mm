#include <functional>
#include <tuple>

#import "tests/adapters/appkit/support/hosted_panel_test.h"
#import "tests/adapters/appkit/support/replacing.h"
#include "tests/adapters/appkit/support/x_server.hpp"

namespace host {
namespace {

int taken = 0;
IMP taking = nullptr;

// Releases the mouse button in the screen's corner after the third step.
void takeAndRelease(id self, SEL selector, id sender) {
  reinterpret_cast<void (*)(id, SEL, id)>(taking)(self, selector, sender);
  if (++taken == 3) x_server::releaseButtonAt(0, 0);
}

/// What happens while a box has the keyboard or the mouse button is held.
class EditingInAHost : public HostedPanelTest {
 protected:
  [[nodiscard]] std::string text(NSString* side) { return textOf([box(side) stringValue]); }
  // The editor of a side's box, which gets the keyboard, with the insertion point at the end.
  NSTextView* edit(NSString* side) {
    [window makeFirstResponder:box(side)];
    NSText* const editor = [box(side) currentEditor];
    [editor setSelectedRange:NSMakeRange([[editor string] length], 0)];
    return static_cast<NSTextView*>(editor);
  }
};

TEST_F(EditingInAHost, StepsWhileTheButtonIsHeldAndStopsWhereverItIsReleased) {
  store(@"MVTopMargin", @"5");
  ASSERT_NO_FATAL_FAILURE(showOn());
  const Replacing counted(@"MorvaTTTextBoxKV2", @selector(takeIntValueFrom:),
                          reinterpret_cast<IMP>(takeAndRelease), "v@:@");
  taking = counted.before();
  taken = 0;
  // GNUstep does not take this default of macOS from the nib.
  [stepper(@"Top") setAutorepeat:YES];
  user::hold(stepper(@"Top"));
  EXPECT_GE(taken, 3);
  EXPECT_EQ(text(@"Top"), std::to_string(5 + taken));
  EXPECT_EQ([stepper(@"Top") intValue], 5 + taken);
  const int steps = taken;
  handleEvents();
  EXPECT_EQ(taken, steps);
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), std::to_string(5 + steps));
}

TEST_F(EditingInAHost, EndsInABoxThatIsGreyed) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  NSTextView* const editor = edit(@"Top");
  [editor selectAll:nil];
  [editor insertText:@"12"];
  [checkBox() performClick:nil];
  EXPECT_EQ([box(@"Top") currentEditor], nil);
  EXPECT_EQ(text(@"Top"), "12");
  EXPECT_EQ([stepper(@"Top") intValue], 12);
  [window makeFirstResponder:box(@"Top")];
  EXPECT_EQ([box(@"Top") currentEditor], nil);
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "12");
}

TEST_F(EditingInAHost, ContinuesFromTheTextsThatAHostOrAButtonRestores) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const auto restorations = {std::pair<std::function<void()>, const char*>{
                                 [&] { [panel restoreValuesAndReturnError:nullptr]; }, "1"},
                             {[&] { [panel willShow]; }, "1"},
                             {[&] { [panel summaryInfo]; }, "1"},
                             {[&] { [defaultButton() performClick:nil]; }, "5"}};
  for (const auto& [restore, restored] : restorations) {
    store(@"MVTopMargin", @"1");
    NSTextView* const editor = edit(@"Top");
    [editor selectAll:nil];
    [editor insertText:@"12"];
    restore();
    EXPECT_EQ(text(@"Top"), restored);
    EXPECT_EQ(textOf([editor string]), restored);
    edit(@"Top");
    [editor deleteBackward:nil];
    [editor insertText:@"7"];
    EXPECT_EQ(text(@"Top"), "7");
    EXPECT_EQ([stepper(@"Top") intValue], 7);
  }
}

// macOS reports each change of a text that an input method composes, GNUstep only the composed text.
TEST_F(EditingInAHost, CorrectsATextThatAnInputMethodStillComposes) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  [edit(@"Top") setMarkedText:@"7" selectedRange:NSMakeRange(1, 0)];
  ASSERT_EQ(text(@"Top"), "57");
  [[NSNotificationCenter defaultCenter] postNotificationName:NSControlTextDidChangeNotification
                                                      object:box(@"Top")];
  EXPECT_EQ(text(@"Top"), "20");
  EXPECT_EQ([stepper(@"Top") intValue], 20);
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "20");
}

TEST_F(EditingInAHost, StepsFromTheLastMarginWhileAnInputMethodComposes) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  [edit(@"Top") setMarkedText:@"7" selectedRange:NSMakeRange(1, 0)];
  ASSERT_TRUE(user::step(stepper(@"Top"), 1));
  EXPECT_EQ(text(@"Top"), "6");
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "6");
}

// The keys of the dialog's own buttons and of the application's menu, and letters that might select a
// control.
TEST_F(EditingInAHost, LeavesKeysWithModifiersToTheDialog) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  NSDictionary* const before = [[[host settings] copy] autorelease];
  ASSERT_TRUE(user::replaceText(box(@"Top"), @"12"));
  for (NSString* key in @[ @"\r", @"\x1B", @"\x03", @" ", @"d", @"p", @"s", @"t", @"w", @"z", @".", @"1" ]) {
    for (const NSUInteger modifiers : std::initializer_list<NSUInteger>{
             0, NSShiftKeyMask, NSControlKeyMask, NSAlternateKeyMask, NSCommandKeyMask,
             NSCommandKeyMask | NSShiftKeyMask, NSCommandKeyMask | NSAlternateKeyMask}) {
      NSEvent* const pressed = [NSEvent keyEventWithType:NSKeyDown
                                                location:NSZeroPoint
                                           modifierFlags:modifiers
                                               timestamp:0
                                            windowNumber:[window windowNumber]
                                                 context:nil
                                              characters:key
                             charactersIgnoringModifiers:key
                                               isARepeat:NO
                                                 keyCode:0];
      EXPECT_FALSE([[panel panelView] performKeyEquivalent:pressed]) << textOf(key) << " with " << modifiers;
    }
  }
  EXPECT_EQ([checkBox() state], NSOnState);
  EXPECT_EQ(text(@"Top"), "12");
  EXPECT_TRUE([[host settings] isEqual:before]);
}

/// Two panels at once, each for a job of its own.
class TwoPanelsInAHost : public EditingInAHost {
 protected:
  void SetUp() override {
    other_ = [[TestHost alloc] initWithPPD:nil];
    [[other_ settings] setObject:@"On" forKey:@"MVTandemTrim"];
    showOn();
    @autoreleasepool {
      panels_ = [[plugin PDEPanelsForType:kPrintDialogType withHostInfo:other_] retain];
    }
    ASSERT_EQ([panels_ count], 1U);
    otherWindow_ = showInWindow([otherPanel() panelView]);
    [otherPanel() willShow];
  }
  void TearDown() override {
    closeOther();
    [other_ release];
  }
  void closeOther() {
    @autoreleasepool {
      [otherWindow_ close];
      otherWindow_ = nil;
      [panels_ release];
      panels_ = nil;
    }
  }
  [[nodiscard]] id<HostedPanel> otherPanel() { return [panels_ objectAtIndex:0]; }
  [[nodiscard]] id otherControl(NSString* outlet) {
    return [[otherPanel() viewController] performSelector:NSSelectorFromString(outlet)];
  }
  [[nodiscard]] std::string otherText(NSString* outlet) { return textOf([otherControl(outlet) stringValue]); }
  [[nodiscard]] NSDictionary* otherSettings() { return [other_ settings]; }

 private:
  TestHost* other_ = nil;
  NSArray* panels_ = nil;
  NSWindow* otherWindow_ = nil;
};

// Without a PPD file, the limit is that of the bundle.
TEST_F(TwoPanelsInAHost, HaveTheLimitsTheTextsAndTheJobsOfTheirOwn) {
  ASSERT_TRUE(user::replaceText(box(@"Top"), @"99"));
  EXPECT_EQ(otherText(@"textBoxMarginTop"), "5");
  EXPECT_EQ(otherText(@"stepperMarginTop"), "5");
  ASSERT_TRUE(user::replaceText(otherControl(@"textBoxMarginTop"), @"99"));
  EXPECT_EQ(otherText(@"textBoxMarginTop"), "10");
  EXPECT_EQ(text(@"Top"), "20");
  EXPECT_EQ([stepper(@"Top") intValue], 20);
  ASSERT_TRUE(user::click(otherControl(@"tandemTrimValid")));
  EXPECT_TRUE([box(@"Top") isEnabled]);
  EXPECT_EQ(textOf([[host settings] objectForKey:@"MVTopMargin"]), "5");
  EXPECT_TRUE([otherPanel() saveValuesAndReturnError:nullptr]);
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "5");
  EXPECT_TRUE(save());
  for (const auto& [settings, valid, top] :
       {std::tuple{static_cast<NSDictionary*>([host settings]), "On", "20"},
        {otherSettings(), "Off", "10"}}) {
    EXPECT_EQ(textOf([settings objectForKey:@"MVTandemTrim"]), valid);
    EXPECT_EQ(textOf([settings objectForKey:@"MVTopMargin"]), top);
  }
  EXPECT_EQ([[panel summaryInfo] count], 7U);
  EXPECT_EQ([[otherPanel() summaryInfo] count], 1U);
}

TEST_F(TwoPanelsInAHost, EndOneWithoutTheOther) {
  closeOther();
  ASSERT_TRUE(user::replaceText(box(@"Top"), @"1a2"));
  EXPECT_EQ(text(@"Top"), "12");
  ASSERT_TRUE(user::step(stepper(@"Top"), 1));
  EXPECT_EQ(text(@"Top"), "13");
  EXPECT_TRUE(save());
  EXPECT_EQ(textOf(stored(@"MVTopMargin")), "13");
}

}  // namespace
}  // namespace host
