#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

class PanelRequestInAHost : public HostedPanelTest {};

TEST_F(PanelRequestInAHost, ReachesThePluginOnlyByTheBundlesPrincipalClass) {
  EXPECT_EQ(textOf(NSStringFromClass([pluginBundle() principalClass])), "MorvaTTPdePluginKV2");
  EXPECT_EQ([[pluginBundle() principalClass] superclass], [NSObject class]);
  EXPECT_EQ([plugin bundle], pluginBundle());
}

TEST_F(PanelRequestInAHost, NeedsABundle) {
  id<HostedPlugin> other = newPlugin();
  EXPECT_FALSE([other initWithBundle:nil]);
  EXPECT_EQ([other bundle], nil);
  EXPECT_EQ([other PDEPanelsForType:kPrintDialogType withHostInfo:host], nil);
  [static_cast<id>(other) release];
  EXPECT_FALSE([plugin initWithBundle:nil]);
  EXPECT_EQ([plugin bundle], pluginBundle());
}

TEST_F(PanelRequestInAHost, ReturnsOnePanelThatOnlyTheListRetains) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(textOf(NSStringFromClass([static_cast<id>(panel) class])), "MorvaTTPdePanelKV2");
  EXPECT_EQ([static_cast<id>(panel) retainCount], 1U);
}

TEST_F(PanelRequestInAHost, ReturnsNilForAnotherType) {
  for (NSString* type in @[
         @"", @"bdb091f4-e57f-11d3-b5cc-0050e4603277", @"6E6ED964-B738-11D3-952F-0050E4603277",
         @" BDB091F4-E57F-11D3-B5CC-0050E4603277"
       ]) {
    EXPECT_EQ([plugin PDEPanelsForType:type withHostInfo:host], nil) << '"' << textOf(type) << '"';
  }
  EXPECT_EQ([plugin PDEPanelsForType:nil withHostInfo:host], nil);
  EXPECT_EQ([[host settings] count], 0U);
}

TEST_F(PanelRequestInAHost, ReturnsNilWithoutAHost) {
  EXPECT_EQ([plugin PDEPanelsForType:kPrintDialogType withHostInfo:nil], nil);
}

TEST_F(PanelRequestInAHost, ReturnsANewPanelEachTime) {
  NSArray* one = [plugin PDEPanelsForType:kPrintDialogType withHostInfo:host];
  NSArray* other = [plugin PDEPanelsForType:kPrintDialogType withHostInfo:host];
  EXPECT_NE(one, other);
  EXPECT_NE([one objectAtIndex:0], [other objectAtIndex:0]);
  EXPECT_NE([[one objectAtIndex:0] panelView], [[other objectAtIndex:0] panelView]);
}

TEST_F(PanelRequestInAHost, StoresTheDefaultsThatTheJobLacksAndNothingElse) {
  store(@"MVTopMargin", @"33");
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_TRUE([[host settings] isEqual:(@{
                                 @"MVTandemTrim" : @"Off",
                                 @"MVImageDirectionPriority" : @"LongEdgeFeed",
                                 @"MVPrintPosition" : @"Center",
                                 @"MVTopMargin" : @"33",
                                 @"MVBottomMargin" : @"5",
                                 @"MVLeftMargin" : @"5",
                                 @"MVRightMargin" : @"5"
                               })])
      << textOf([[host settings] description]);
}

TEST_F(PanelRequestInAHost, SurvivesAHostWithoutPrintSettings) {
  TestHost* const empty = [[[TestHostWithoutSettings alloc] initWithPPD:nil] autorelease];
  NSArray* panels = [plugin PDEPanelsForType:kPrintDialogType withHostInfo:empty];
  ASSERT_EQ([panels count], 1U);
  EXPECT_NE([[panels objectAtIndex:0] panelView], nil);
  EXPECT_TRUE([[panels objectAtIndex:0] saveValuesAndReturnError:nullptr]);
  EXPECT_EQ([[[panels objectAtIndex:0] summaryInfo] count], 1U);
}

}  // namespace
}  // namespace host
