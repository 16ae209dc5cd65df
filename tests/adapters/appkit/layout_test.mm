#include <set>
#include <vector>

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

class LayoutInAHost : public HostedPanelTest {
 protected:
  void SetUp() override { showOn(); }

  // The labels to the left of the controls, aligned on their right, and the labels to the right of them.
  [[nodiscard]] NSArray* names() { return labels(true); }
  [[nodiscard]] NSArray* limits() { return labels(false); }
  [[nodiscard]] static std::set<CGFloat> edges(NSArray* views, CGFloat (*edge)(NSRect)) {
    std::set<CGFloat> found;
    for (NSView* view in views) found.insert(edge([view frame]));
    return found;
  }
  static CGFloat left(NSRect frame) { return NSMinX(frame); }
  static CGFloat right(NSRect frame) { return NSMaxX(frame); }
  void expectNoOverlap() {
    // The frames of steppers and menus include space that they do not draw in.
    NSArray* const all = [[panel panelView] subviews];
    for (NSUInteger one = 0; one < [all count]; ++one) {
      for (NSUInteger other = one + 1; other < [all count]; ++other) {
        const NSRect shared = NSIntersectionRect(NSInsetRect([[all objectAtIndex:one] frame], 3, 3),
                                                 NSInsetRect([[all objectAtIndex:other] frame], 3, 3));
        EXPECT_TRUE(NSIsEmptyRect(shared)) << textOf([[all objectAtIndex:one] description]) << " and "
                                           << textOf([[all objectAtIndex:other] description]);
      }
    }
  }

 private:
  [[nodiscard]] NSArray* labels(bool right) {
    NSMutableArray* found = [NSMutableArray array];
    for (NSTextField* label in views(@"MorvaTTTextLabelKV2")) {
      if (([label alignment] == NSRightTextAlignment) == right) [found addObject:label];
    }
    return found;
  }
};

TEST_F(LayoutInAHost, AlignsLabelsOnTheirRightAndControlsOnTheirLeft) {
  EXPECT_EQ([names() count], 6U);
  EXPECT_EQ(edges(names(), right).size(), 1U);
  for (NSString* name in @[ @"MorvaTTPopUpButtonKV2", @"MorvaTTTextBoxKV2", @"MorvaTTStepperKV2" ])
    EXPECT_EQ(edges(views(name), left).size(), 1U) << textOf(name);
}

TEST_F(LayoutInAHost, PutsEachLabelBesideItsControlAndItsLimitAfterIt) {
  NSArray* const controls =
      [views(@"MorvaTTPopUpButtonKV2") arrayByAddingObjectsFromArray:views(@"MorvaTTTextBoxKV2")];
  ASSERT_EQ([names() count], [controls count]);
  for (NSUInteger row = 0; row < [controls count]; ++row) {
    const NSRect control = [[controls objectAtIndex:row] frame];
    const NSRect label = [[names() objectAtIndex:row] frame];
    EXPECT_LT(NSMaxX(label), NSMinX(control)) << row;
    EXPECT_NEAR(NSMidY(label), NSMidY(control), 2) << row;
  }
  ASSERT_EQ([limits() count], 4U);
  for (NSUInteger row = 0; row < 4; ++row) {
    const NSRect step = [[views(@"MorvaTTStepperKV2") objectAtIndex:row] frame];
    EXPECT_GT(NSMinX([[limits() objectAtIndex:row] frame]), NSMaxX(step) - 1);
    EXPECT_NEAR(NSMidY([[limits() objectAtIndex:row] frame]), NSMidY(step), 2) << row;
  }
}

// macOS draws controls smaller than their frames, by these insets.
TEST_F(LayoutInAHost, LeavesTwentyPointsAtEachEdge) {
  const NSRect bounds = [[panel panelView] bounds];
  const CGFloat labelInset = 2;
  const CGFloat menuInset = 3;
  const CGFloat buttonInset = 7;
  EXPECT_EQ(NSMinX([[names() objectAtIndex:0] frame]) + labelInset, 20);
  EXPECT_EQ(NSMaxX(bounds) - NSMaxX([view(@"MorvaTTPopUpButtonKV2") frame]) + menuInset, 20);
  EXPECT_EQ(NSMaxY(bounds) - NSMaxY([checkBox() frame]), 20);
  EXPECT_EQ(NSMinY([defaultButton() frame]) + buttonInset, 20);
}

TEST_F(LayoutInAHost, LetsNoTwoControlsOverlap) { expectNoOverlap(); }

// A dialog resizes the panel to its own width.
TEST_F(LayoutInAHost, FillsAnyWidth) {
  NSView* const whole = [panel panelView];
  const CGFloat designed = NSWidth([whole frame]);
  std::vector<CGFloat> gaps;
  for (NSView* control in [whole subviews]) gaps.push_back(designed - NSMaxX([control frame]));
  for (const CGFloat width : {400.0, 480.0, 640.0}) {
    [whole setFrameSize:NSMakeSize(width, NSHeight([whole frame]))];
    expectNoOverlap();
    for (NSView* control in [whole subviews])
      EXPECT_TRUE(NSContainsRect([whole bounds], [control frame])) << width;
    for (NSString* name in @[ @"MorvaTTPopUpButtonKV2", @"MorvaTTCheckBoxKV2", @"MorvaTTButtonKV2" ]) {
      for (NSView* control in views(name)) {
        const auto index = [[whole subviews] indexOfObject:control];
        EXPECT_EQ(width - NSMaxX([control frame]), gaps[index]) << textOf(name) << " at " << width;
      }
    }
  }
  EXPECT_TRUE([whole autoresizingMask] & NSViewWidthSizable);
}

}  // namespace
}  // namespace host
