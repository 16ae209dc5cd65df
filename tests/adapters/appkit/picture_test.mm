#include <set>

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

class PictureOfAPanel : public HostedPanelTest {
 protected:
  // A picture of the window inside its border.
  [[nodiscard]] NSBitmapImageRep* take() {
    handleEvents();
    NSView* const content = [window contentView];
    [content lockFocus];
    NSBitmapImageRep* picture =
        [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[content bounds]] autorelease];
    [content unlockFocus];
    return picture;
  }
  // The number of colours inside a view; 1 if nothing is drawn.
  [[nodiscard]] static std::size_t colors(NSBitmapImageRep* picture, NSView* view) {
    const NSRect frame = [view frame];
    std::set<NSUInteger> found;
    for (auto y = NSMinY(frame); y < NSMaxY(frame); ++y) {
      for (auto x = NSMinX(frame); x < NSMaxX(frame); ++x) {
        NSUInteger pixel[5] = {};
        [picture getPixel:pixel
                      atX:static_cast<NSInteger>(x)
                        y:[picture pixelsHigh] - 1 - static_cast<NSInteger>(y)];
        found.insert(pixel[0] << 16U | pixel[1] << 8U | pixel[2]);
      }
    }
    return found.size();
  }
};

// The labels are black or light grey, which must be readable wherever the panel is shown.
TEST_F(PictureOfAPanel, HasALightBackgroundInADarkWindow) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  [window setBackgroundColor:[NSColor blackColor]];
  [[window contentView] setNeedsDisplay:YES];
  [window display];
  NSBitmapImageRep* const picture = take();
  NSColor* const ground =
      [[NSColor windowBackgroundColor] colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
  for (NSView* control in [[panel panelView] subviews]) {
    NSUInteger pixel[5] = {};
    [picture getPixel:pixel
                  atX:static_cast<NSInteger>(NSMinX([control frame])) - 3
                    y:[picture pixelsHigh] - 1 - static_cast<NSInteger>(NSMidY([control frame]))];
    for (const auto part : {pixel[0], pixel[1], pixel[2]}) {
      EXPECT_GT(part, 200U) << textOf([control description]);
      EXPECT_NEAR(static_cast<CGFloat>(part), 255 * [ground redComponent], 2);
    }
  }
  EXPECT_TRUE([[panel panelView] isOpaque]);
}

TEST_F(PictureOfAPanel, ShowsEveryControl) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  NSBitmapImageRep* picture = take();
  ASSERT_NE(picture, nil);
  for (NSView* control in [[panel panelView] subviews]) {
    EXPECT_GT(colors(picture, control), 1U) << textOf([control description]);
  }
  NSString* name = [NSString stringWithFormat:@"appkit-%@.png", language()];
  NSString* folder = [NSString stringWithUTF8String:PICTURES];
  [[NSFileManager defaultManager] createDirectoryAtPath:folder
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:nullptr];
  NSData* png = [picture representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
  EXPECT_TRUE([png writeToFile:[folder stringByAppendingPathComponent:name] atomically:NO]);
}

}  // namespace
}  // namespace host
