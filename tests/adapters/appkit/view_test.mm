#include <vector>

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

using Outlets = NSDictionary*;

// The name of an object among the outlets, or a word for nil, the owner and any other object.
NSString* nameOf(id object, Outlets outlets, id owner) {
  if (object == nil) return @"nobody";
  if (object == owner) return @"the owner";
  NSArray* const names = [outlets allKeysForObject:object];
  return [names count] == 1 ? [names objectAtIndex:0] : @"another";
}

// The properties that the nib sets for objects of a class, except the texts and colours that the panel sets.
// Two are left out as GNUstep's defaults are not macOS's: whether a label can be edited, and where a plain
// button has an image.
struct {
  NSString* className;
  std::vector<NSString*> keys;
} const kProperties[]{
    {@"NSView", {@"class", @"frame", @"autoresizingMask"}},
    {@"NSControl", {@"alignment", @"font", @"isContinuous", @"cell.formatter.class"}},
    {@"NSTextField",
     {@"isBezeled", @"isBordered", @"drawsBackground", @"backgroundColor", @"cell.lineBreakMode",
      @"cell.sendsActionOnEndEditing"}},
    {@"MorvaTTTextBoxKV2", {@"isEditable", @"isSelectable", @"cell.isScrollable"}},
    {@"NSStepper", {@"increment", @"valueWraps"}},
    {@"NSButton", {@"bezelStyle", @"isBordered"}},
    {@"MorvaTTCheckBoxKV2", {@"imagePosition", @"cell.highlightsBy", @"cell.showsStateBy"}},
    {@"NSPopUpButton", {@"numberOfItems", @"pullsDown", @"cell.lineBreakMode"}},
};

// The properties of a view and its connections.
std::string describe(NSView* view, Outlets outlets, id owner) {
  NSMutableString* description = [NSMutableString string];
  for (const auto& [className, keys] : kProperties) {
    if (![view isKindOfClass:NSClassFromString(className)]) continue;
    for (NSString* key : keys) [description appendFormat:@"%@: %@\n", key, [view valueForKeyPath:key]];
  }
  [description appendFormat:@"in %@, then %@\n", nameOf([view superview], outlets, owner),
                            nameOf([view nextKeyView], outlets, owner)];
  if ([view isKindOfClass:[NSControl class]]) {
    NSControl* const control = (NSControl*)view;
    [description appendFormat:@"sends %@ to %@", NSStringFromSelector([control action]),
                              nameOf([control target], outlets, owner)];
  }
  return textOf(description);
}

class ViewInAHost : public HostedPanelTest {};

// Runs with a view from the nib's file, and again with a view made by code.
TEST_F(ViewInAHost, MatchesTheNib) {
  ASSERT_NO_FATAL_FAILURE(open());
  [panel panelView];
  id const controller = [panel viewController];
  id const owner = [[[[controller class] alloc] performSelector:@selector(initWithCommonInfo:)
                                                     withObject:[panel commonInfo]] autorelease];
  NSMutableArray* const loaded = [NSMutableArray array];
  NSDictionary* const given = @{NSNibOwner : owner, NSNibTopLevelObjects : loaded};
  ASSERT_TRUE([NSBundle loadNibFile:[NSString stringWithUTF8String:XIB]
                  externalNameTable:given
                           withZone:nullptr]);
  // The toolkit has retained them once for the owner.
  [loaded makeObjectsPerformSelector:@selector(release)];
  NSXMLDocument* const nib = [[[NSXMLDocument alloc]
      initWithContentsOfURL:[NSURL fileURLWithPath:[NSString stringWithUTF8String:XIB]]
                    options:0
                      error:nullptr] autorelease];
  NSMutableDictionary* const made = [NSMutableDictionary dictionary];
  NSMutableDictionary* const described = [NSMutableDictionary dictionary];
  for (NSXMLNode* property in [[nib rootElement] nodesForXPath:@"//*[@id='-2']/connections/outlet/@property"
                                                         error:nullptr]) {
    NSString* const name = [property stringValue];
    [made setObject:[controller performSelector:NSSelectorFromString(name)] forKey:name];
    [described setObject:[owner performSelector:NSSelectorFromString(name)] forKey:name];
  }
  EXPECT_EQ([described count], 23U);
  for (NSString* name in described) {
    EXPECT_EQ(describe([made objectForKey:name], made, controller),
              describe([described objectForKey:name], described, owner))
        << textOf(name);
  }
}

}  // namespace
}  // namespace host
