#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

NSComparisonResult fromTopToBottom(id one, id other, void*) {
  const CGFloat first = NSMinY([one frame]);
  const CGFloat second = NSMinY([other frame]);
  if (first == second) return NSOrderedSame;
  return first > second ? NSOrderedAscending : NSOrderedDescending;
}

void collect(NSView* view, Class wanted, NSMutableArray* found) {
  if ([view isMemberOfClass:wanted]) [found addObject:view];
  for (NSView* inner in [view subviews]) collect(inner, wanted, found);
}

}  // namespace

NSString* language() {
  return [[[NSUserDefaults standardUserDefaults] stringArrayForKey:@"NSLanguages"] objectAtIndex:0];
}

NSString* localized(NSString* key) {
  static NSDictionary* const table = [] {
    NSString* path = [pluginBundle() pathForResource:@"Localizable"
                                              ofType:@"strings"
                                         inDirectory:nil
                                     forLocalization:language()];
    NSString* text = [NSString stringWithContentsOfFile:path encoding:NSUTF8StringEncoding error:nullptr];
    return [[text propertyListFromStringsFileFormat] retain];
  }();
  return [table objectForKey:key];
}

HostedPanelTest::HostedPanelTest()
    : host([[TestHost alloc] initWithPPD:[NSString stringWithUTF8String:SAMPLE_PPD]]), plugin(newPlugin()) {
  [plugin initWithBundle:pluginBundle()];
}

HostedPanelTest::~HostedPanelTest() {
  close();
  [static_cast<id>(plugin) release];
  [host release];
}

void HostedPanelTest::open() {
  @autoreleasepool {
    panels_ = [[plugin PDEPanelsForType:kPrintDialogType withHostInfo:host] retain];
  }
  ASSERT_EQ([panels_ count], 1U);
  panel = [panels_ objectAtIndex:0];
}

void HostedPanelTest::show() {
  ASSERT_NO_FATAL_FAILURE(open());
  @autoreleasepool {
    NSView* view = [panel panelView];
    ASSERT_NE(view, nil);
    window = showInWindow(view);
    [panel willShow];
  }
}

void HostedPanelTest::showOn() {
  store(@"MVTandemTrim", @"On");
  show();
}

void HostedPanelTest::close() {
  @autoreleasepool {
    [window close];
    window = nil;
    panel = nil;
    [panels_ release];
    panels_ = nil;
  }
}

bool HostedPanelTest::save() { return [panel saveValuesAndReturnError:nullptr]; }

NSArray* HostedPanelTest::views(NSString* className) {
  NSMutableArray* found = [NSMutableArray array];
  collect([panel panelView], NSClassFromString(className), found);
  return [found sortedArrayUsingFunction:fromTopToBottom context:nullptr];
}

id HostedPanelTest::titled(NSString* className, NSString* title) {
  id found = nil;
  for (id control in views(className)) {
    const bool offers = [control respondsToSelector:@selector(itemTitles)];
    if (offers ? [[control itemTitles] containsObject:title] : [[control title] isEqual:title]) {
      EXPECT_EQ(found, nil) << "two are titled " << textOf(title);
      found = control;
    }
  }
  return found;
}

NSPopUpButton* HostedPanelTest::menu(NSString* value) {
  for (NSPopUpButton* menu in views(@"MorvaTTPopUpButtonKV2")) {
    if ([menu indexOfItemWithRepresentedObject:value] >= 0) return menu;
  }
  return nil;
}

id HostedPanelTest::identified(NSString* className, NSString* side) {
  for (id control in views(className)) {
    if ([[control valueForKey:@"identifier"] isEqual:side]) return control;
  }
  return nil;
}

}  // namespace host
