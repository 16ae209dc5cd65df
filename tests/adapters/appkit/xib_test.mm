#import <Foundation/Foundation.h>
#include <gmock/gmock.h>

namespace host {
namespace {

// The text of the nib's file, which has parts that macOS reads and GNUstep does not.
class Xib : public testing::Test {
 protected:
  [[nodiscard]] NSArray* nodes(NSString* path) const {
    NSError* error = nil;
    NSArray* found = [[document rootElement] nodesForXPath:path error:&error];
    if (error != nil) ADD_FAILURE() << [[error description] UTF8String];
    return found;
  }
  [[nodiscard]] static std::string attribute(NSXMLElement* element, NSString* name) {
    NSString* value = [[element attributeForName:name] stringValue];
    return value == nil ? "" : [value UTF8String];
  }
  // The user label of the object that provides this object's accessibility title, or empty.
  [[nodiscard]] std::string titleOf(NSString* object) const {
    NSArray* connections = nodes([NSString
        stringWithFormat:@"//*[@userLabel='%@']/connections/accessibilityConnection[@property='title']",
                         object]);
    if ([connections count] != 1) return "";
    NSString* destination = [[[connections objectAtIndex:0] attributeForName:@"destination"] stringValue];
    NSArray* found = nodes([NSString stringWithFormat:@"//*[@id='%@']", destination]);
    return [found count] == 1 ? attribute([found objectAtIndex:0], @"userLabel") : "";
  }

  NSXMLDocument* const document = [[[NSXMLDocument alloc]
      initWithContentsOfURL:[NSURL fileURLWithPath:[NSString stringWithUTF8String:XIB]]
                    options:0
                      error:nullptr] autorelease];
};

TEST_F(Xib, NamesEveryControlWithoutATitleByItsLabel) {
  EXPECT_EQ(titleOf(@"directionPopUp"), "labelDirection");
  EXPECT_EQ(titleOf(@"positionPopUp"), "labelPosition");
  for (NSString* side in @[ @"Top", @"Bottom", @"Left", @"Right" ]) {
    const std::string label = std::string("labelMargin") + [side UTF8String];
    EXPECT_EQ(titleOf([@"textBoxMargin" stringByAppendingString:side]), label);
    EXPECT_EQ(titleOf([@"stepperMargin" stringByAppendingString:side]), label);
  }
}

TEST_F(Xib, GivesEveryObjectAUniqueIdAndEveryConnectionAnEnd) {
  NSMutableSet* identities = [NSMutableSet set];
  NSArray* const identified = nodes(@"//*[@id]");
  for (NSXMLElement* element in identified)
    [identities addObject:[[element attributeForName:@"id"] stringValue]];
  EXPECT_EQ([identities count], [identified count]);
  for (NSString* end in @[ @"destination", @"target" ]) {
    for (NSXMLElement *element in nodes([NSString stringWithFormat:@"//connections/*[@%@]", end])) {
      EXPECT_TRUE([identities containsObject:[[element attributeForName:end] stringValue]])
          << [[element description] UTF8String];
    }
  }
}

TEST_F(Xib, StepsByOneMillimetreAsLongAsAStepperIsHeld) {
  EXPECT_EQ([nodes(@"//stepperCell[@continuous='YES' and @increment='1' and @valueWraps='NO']") count], 4U);
  EXPECT_EQ([nodes(@"//@autorepeat") count], 0U);
}

TEST_F(Xib, PutsTheFormatterOnTheFourSteppersOnly) {
  NSArray* const formatters =
      nodes(@"/document/objects/customObject[@customClass='MorvaTTDecimalFormatterKV2']");
  ASSERT_EQ([formatters count], 1U);
  NSString* const identity = [[[formatters objectAtIndex:0] attributeForName:@"id"] stringValue];
  EXPECT_EQ(
      [nodes([NSString
          stringWithFormat:@"//stepperCell/connections/outlet[@property='formatter' and @destination='%@']",
                           identity]) count],
      4U);
  EXPECT_EQ([nodes(@"//outlet[@property='formatter']") count], 4U);
  EXPECT_EQ([nodes(@"//*[@key='formatter']") count], 0U);
}

}  // namespace
}  // namespace host
