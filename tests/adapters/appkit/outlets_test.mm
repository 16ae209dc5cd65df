#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

struct Outlet {
  NSString* name;
  NSString* className;
};

const std::vector<Outlet> kOutlets{
    {@"labelDirection", @"MorvaTTTextLabelKV2"},       {@"labelPosition", @"MorvaTTTextLabelKV2"},
    {@"labelMarginTop", @"MorvaTTTextLabelKV2"},       {@"labelMarginBottom", @"MorvaTTTextLabelKV2"},
    {@"labelMarginLeft", @"MorvaTTTextLabelKV2"},      {@"labelMarginRight", @"MorvaTTTextLabelKV2"},
    {@"labelMarginLimitTop", @"MorvaTTTextLabelKV2"},  {@"labelMarginLimitBottom", @"MorvaTTTextLabelKV2"},
    {@"labelMarginLimitLeft", @"MorvaTTTextLabelKV2"}, {@"labelMarginLimitRight", @"MorvaTTTextLabelKV2"},
    {@"textBoxMarginTop", @"MorvaTTTextBoxKV2"},       {@"textBoxMarginBottom", @"MorvaTTTextBoxKV2"},
    {@"textBoxMarginLeft", @"MorvaTTTextBoxKV2"},      {@"textBoxMarginRight", @"MorvaTTTextBoxKV2"},
    {@"stepperMarginTop", @"MorvaTTStepperKV2"},       {@"stepperMarginBottom", @"MorvaTTStepperKV2"},
    {@"stepperMarginLeft", @"MorvaTTStepperKV2"},      {@"stepperMarginRight", @"MorvaTTStepperKV2"},
    {@"tandemTrimValid", @"MorvaTTCheckBoxKV2"},       {@"directionPopUp", @"MorvaTTPopUpButtonKV2"},
    {@"positionPopUp", @"MorvaTTPopUpButtonKV2"},      {@"defaultButton", @"MorvaTTButtonKV2"},
};

NSString* setterOf(NSString* name) {
  return [NSString
      stringWithFormat:@"set%@%@:", [[name substringToIndex:1] uppercaseString], [name substringFromIndex:1]];
}

class OutletsInAHost : public HostedPanelTest {
 protected:
  [[nodiscard]] id outlet(NSString* name) {
    return [[panel viewController] performSelector:NSSelectorFromString(name)];
  }
  // Sets the outlet to the object, which it then releases. Returns whether the outlet is unchanged and nobody
  // has retained the object.
  [[nodiscard]] bool isUnchangedBy(id object, NSString* name, id controller) {
    id const before = outlet(name);
    const NSUInteger owners = [object retainCount];
    @autoreleasepool {
      [controller performSelector:NSSelectorFromString(setterOf(name)) withObject:object];
    }
    const bool isUnchanged = outlet(name) == before && [object retainCount] == owners;
    [object release];
    return isUnchanged;
  }
};

TEST_F(OutletsInAHost, AreEmptyUntilTheViewIsRequested) {
  ASSERT_NO_FATAL_FAILURE(open());
  for (const auto& [name, className] : kOutlets) EXPECT_EQ(outlet(name), nil) << textOf(name);
  EXPECT_EQ(outlet(@"tandemTrimView"), nil);
  EXPECT_FALSE([[[panel viewController] valueForKey:@"viewIsInited"] boolValue]);
}

TEST_F(OutletsInAHost, AreConnectedToOneControlEach) {
  ASSERT_NO_FATAL_FAILURE(open());
  NSView* const view = [panel panelView];
  EXPECT_EQ(outlet(@"tandemTrimView"), view);
  EXPECT_TRUE([[[panel viewController] valueForKey:@"viewIsInited"] boolValue]);
  NSMutableSet* connected = [NSMutableSet set];
  for (const auto& [name, className] : kOutlets) {
    EXPECT_EQ([outlet(name) class], NSClassFromString(className)) << textOf(name);
    EXPECT_EQ([outlet(name) superview], view) << textOf(name);
    [connected addObject:outlet(name)];
  }
  EXPECT_EQ([connected count], kOutlets.size());
  EXPECT_EQ([[view subviews] count], kOutlets.size());
}

TEST_F(OutletsInAHost, HaveSettersThatKeepTheControl) {
  ASSERT_NO_FATAL_FAILURE(open());
  id controller = [panel viewController];
  for (const auto& [name, className] : kOutlets) {
    id control = nil;
    @autoreleasepool {
      control = [[[NSClassFromString(className) alloc] init] autorelease];
      [controller performSelector:NSSelectorFromString(setterOf(name)) withObject:control];
    }
    EXPECT_EQ(outlet(name), control) << textOf(name);
    EXPECT_GE([control retainCount], 1U) << textOf(name);
    [controller performSelector:NSSelectorFromString(setterOf(name)) withObject:nil];
    EXPECT_EQ(outlet(name), nil) << textOf(name);
  }
}

TEST_F(OutletsInAHost, RefuseAnObjectOfAnotherClass) {
  for (const bool isConnected : {false, true}) {
    ASSERT_NO_FATAL_FAILURE(open());
    if (isConnected) [panel panelView];
    id controller = [panel viewController];
    for (const auto& [name, className] : kOutlets) {
      const bool isLabel = [className isEqual:@"MorvaTTTextLabelKV2"];
      for (Class const other : {NSClassFromString(isLabel ? @"MorvaTTStepperKV2" : @"MorvaTTTextLabelKV2"),
                                [NSTextField class], [NSObject class]}) {
        EXPECT_TRUE(isUnchangedBy([[other alloc] init], name, controller)) << textOf(name);
      }
    }
    EXPECT_TRUE(isUnchangedBy([[NSObject alloc] init], @"tandemTrimView", controller));
    close();
  }
}

TEST_F(OutletsInAHost, HaveTheTextsOfTheirSides) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    NSString* label = [localized([side stringByAppendingString:@"Margin"]) stringByAppendingString:@":"];
    EXPECT_EQ(textOf([outlet([@"labelMargin" stringByAppendingString:side]) stringValue]), textOf(label));
    EXPECT_EQ(outlet([@"textBoxMargin" stringByAppendingString:side]), box(side));
    EXPECT_EQ(outlet([@"stepperMargin" stringByAppendingString:side]), stepper(side));
    NSString* limit = [NSString stringWithFormat:@"%d", static_cast<int>([stepper(side) maxValue])];
    NSString* shown = [outlet([@"labelMarginLimit" stringByAppendingString:side]) stringValue];
    EXPECT_NE([shown rangeOfString:limit].location, static_cast<NSUInteger>(NSNotFound)) << textOf(shown);
  }
}

}  // namespace
}  // namespace host
