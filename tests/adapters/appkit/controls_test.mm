#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

struct ControlClass {
  NSString* name;
  Class base;
  NSUInteger count;
};

// The width that a control's text needs. The toolkit's font lacks East Asian characters, which are as wide as
// the font is high, and draws question marks instead.
CGFloat neededWidth(id control, NSString* text) {
  NSFont* const font = [control font];
  CGFloat width = [[control cell] cellSize].width;
  for (NSUInteger index = 0; index < [text length]; ++index) {
    if ([text characterAtIndex:index] >= 0x2E80) width += [font pointSize] - [font widthOfString:@"?"];
  }
  return width;
}

class ControlsInAHost : public HostedPanelTest {
 protected:
  void SetUp() override { showOn(); }

  const std::vector<ControlClass> kClasses{
      {@"MorvaTTCheckBoxKV2", [NSButton class], 1},   {@"MorvaTTPopUpButtonKV2", [NSPopUpButton class], 2},
      {@"MorvaTTTextBoxKV2", [NSTextField class], 4}, {@"MorvaTTButtonKV2", [NSButton class], 1},
      {@"MorvaTTStepperKV2", [NSStepper class], 4},   {@"MorvaTTTextLabelKV2", [NSTextField class], 10},
  };
  NSArray* const kSides = @[ @"Top", @"Bottom", @"Left", @"Right" ];
};

TEST_F(ControlsInAHost, AreOfClassesThatDeriveFromTheToolkits) {
  for (const auto& controlClass : kClasses) {
    EXPECT_EQ([views(controlClass.name) count], controlClass.count) << textOf(controlClass.name);
    EXPECT_EQ([NSClassFromString(controlClass.name) superclass], controlClass.base)
        << textOf(controlClass.name);
  }
}

TEST_F(ControlsInAHost, AreEnabledAndGreyedByAFlag) {
  for (const auto& controlClass : kClasses) {
    id control = view(controlClass.name);
    EXPECT_TRUE([control conformsToProtocol:NSProtocolFromString(@"ViewComponent")]);
    const bool isLabel = [controlClass.name isEqual:@"MorvaTTTextLabelKV2"];
    for (const BOOL flag : {NO, YES}) {
      [control performSelector:@selector(changeState:) withObject:[NSNumber numberWithBool:flag]];
      EXPECT_EQ([control isEnabled], isLabel || flag) << textOf(controlClass.name);
      if (isLabel) {
        EXPECT_TRUE([[control textColor] isEqual:flag ? [NSColor blackColor] : [NSColor lightGrayColor]]);
      }
    }
    [control performSelector:@selector(changeState:) withObject:nil];
    EXPECT_EQ([control isEnabled], isLabel) << textOf(controlClass.name);
  }
}

TEST_F(ControlsInAHost, HaveTextsInTheUsersLanguage) {
  EXPECT_EQ(textOf([checkBox() title]), textOf(localized(@"EnableTandemTrim")));
  EXPECT_EQ(textOf([defaultButton() title]), textOf(localized(@"RestoreDefault")));
  NSMutableSet* labels = [NSMutableSet set];
  for (NSTextField* label in views(@"MorvaTTTextLabelKV2")) [labels addObject:[label stringValue]];
  for (NSString* key in @[
         @"ImageDirection", @"InformPrintingPosition", @"TopMargin", @"BottomMargin", @"LeftMargin",
         @"RightMargin"
       ]) {
    EXPECT_TRUE([labels containsObject:[localized(key) stringByAppendingString:@":"]]) << textOf(key);
  }
  NSString* range = [localized(@"IntegerValueRangeFormat") stringByReplacingOccurrencesOfString:@"[min]"
                                                                                     withString:@"0"];
  range = [range stringByReplacingOccurrencesOfString:@"[max]" withString:@"20"];
  EXPECT_TRUE([labels containsObject:[@"mm   " stringByAppendingString:range]])
      << textOf([labels description]);
}

TEST_F(ControlsInAHost, OfferTheChoicesInTheUsersLanguage) {
  for (NSArray* names in @[ @[ @"Left", @"Center", @"Right" ], @[ @"LongEdgeFeed", @"ShortEdgeFeed" ] ]) {
    NSPopUpButton* choices = menu([names objectAtIndex:0]);
    ASSERT_EQ([choices numberOfItems], static_cast<NSInteger>([names count]));
    for (NSUInteger index = 0; index < [names count]; ++index) {
      NSString* name = [names objectAtIndex:index];
      id item = [choices itemAtIndex:static_cast<NSInteger>(index)];
      EXPECT_EQ(textOf([item representedObject]), textOf(name));
      EXPECT_EQ(textOf([item title]), textOf(localized(name)));
    }
  }
}

TEST_F(ControlsInAHost, HaveTheirTargetsActionsAndFormatters) {
  id owner = [panel viewController];
  EXPECT_EQ([checkBox() target], owner);
  EXPECT_TRUE(sel_isEqual([checkBox() action], @selector(changeTandemTrimValid:)));
  EXPECT_EQ([defaultButton() target], owner);
  EXPECT_TRUE(sel_isEqual([defaultButton() action], @selector(setDefaultValue:)));
  for (NSString* side in kSides) {
    EXPECT_EQ([box(side) delegate], nil) << textOf(side);
    EXPECT_EQ([box(side) action], nullptr) << textOf(side);
    EXPECT_EQ([box(side) formatter], nil) << textOf(side);
    EXPECT_EQ([stepper(side) target], box(side)) << textOf(side);
    EXPECT_FALSE([stepper(side) valueWraps]) << textOf(side);
    EXPECT_EQ(textOf(NSStringFromClass([[stepper(side) formatter] class])), "MorvaTTDecimalFormatterKV2");
  }
}

TEST_F(ControlsInAHost, HaveRoomForEveryChoice) {
  for (NSPopUpButton* choices in views(@"MorvaTTPopUpButtonKV2")) {
    for (NSInteger index = 0; index < [choices numberOfItems]; ++index) {
      [choices selectItemAtIndex:index];
      NSString* const title = [choices titleOfSelectedItem];
      EXPECT_LE(neededWidth(choices, title), NSWidth([choices frame])) << textOf(title);
    }
  }
}

TEST_F(ControlsInAHost, HaveRoomForTheirTexts) {
  for (const auto& controlClass : kClasses) {
    for (NSControl* control in views(controlClass.name)) {
      NSString* const text = [control respondsToSelector:@selector(title)] ? [static_cast<id>(control) title]
                                                                           : [control stringValue];
      EXPECT_LE(neededWidth(control, text), NSWidth([control frame])) << textOf(text);
      EXPECT_TRUE(NSContainsRect([[panel panelView] bounds], [control frame]));
    }
  }
}

using ControlsInTheNib = HostedPanelTest;

// A window may change the order that the nib sets, so the view is in no window.
TEST_F(ControlsInTheNib, FollowOneAnotherInReadingOrder) {
  ASSERT_NO_FATAL_FAILURE(open());
  NSMutableArray* reached = [NSMutableArray array];
  for (id control = checkBox(); control != nil && ![reached containsObject:control];
       control = [control nextKeyView]) {
    [reached addObject:control];
  }
  NSMutableArray* expected =
      [NSMutableArray arrayWithObjects:checkBox(), menu(@"LongEdgeFeed"), menu(@"Left"), nil];
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ])
    [expected addObjectsFromArray:@[ box(side), stepper(side) ]];
  [expected addObject:defaultButton()];
  EXPECT_TRUE([reached isEqual:expected]) << textOf([reached description]);
}

}  // namespace
}  // namespace host
