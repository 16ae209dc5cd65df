#include <cstdlib>

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

// Damage to the nib's text (null removes the nib), and the exception that the request for the view then
// raises.
struct Damage {
  const char* name;
  const char* text;
  const char* replacement;
  const char* exception;
};

void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.name; }

// The toolkit finds the nib where the code is, and loads the code once. So each damage needs a separate
// process, with a damaged copy of the bundle.
class DamagedNib : public testing::WithParamInterface<Damage>, public testing::Test {
 protected:
  static void damage(const Damage& damage) {
    NSFileManager* files = [NSFileManager defaultManager];
    NSString* copy = [NSTemporaryDirectory() stringByAppendingPathComponent:@"TandemTrim.bundle"];
    NSString* nib = [copy stringByAppendingPathComponent:@"Contents/Resources/TandemTrim.xib"];
    [files copyItemAtPath:[NSString stringWithUTF8String:std::getenv("TANDEM_TRIM_BUNDLE")]
                   toPath:copy
                    error:nullptr];
    NSString* good = [NSString stringWithContentsOfFile:nib encoding:NSUTF8StringEncoding error:nullptr];
    NSString* text = [NSString stringWithUTF8String:damage.text];
    ASSERT_NE([good rangeOfString:text].location, static_cast<NSUInteger>(NSNotFound));
    [files removeItemAtPath:nib error:nullptr];
    if (damage.replacement != nullptr) {
      NSString* bad =
          [good stringByReplacingOccurrencesOfString:text
                                          withString:[NSString stringWithUTF8String:damage.replacement]];
      [bad writeToFile:nib atomically:NO encoding:NSUTF8StringEncoding error:nullptr];
    }
    setenv("TANDEM_TRIM_BUNDLE", [copy UTF8String], 1);
  }
};

TEST_P(DamagedNib, LeavesAPanelWithoutAViewAndTheJobUnchanged) {
  ASSERT_NO_FATAL_FAILURE(damage(GetParam()));
  TestHost* const host = [[[TestHost alloc] initWithPPD:nil] autorelease];
  id<HostedPlugin> plugin = newPlugin();
  [plugin initWithBundle:pluginBundle()];
  NSArray* panels = [plugin PDEPanelsForType:kPrintDialogType withHostInfo:host];
  ASSERT_EQ([panels count], 1U);
  id<HostedPanel> panel = [panels objectAtIndex:0];
  NSDictionary* before = [[[host settings] copy] autorelease];

  NSView* view = nil;
  EXPECT_EQ(exceptionOf([&] { view = [panel panelView]; }), GetParam().exception);
  EXPECT_EQ(view, nil);
  [panel willShow];
  EXPECT_TRUE([panel restoreValuesAndReturnError:nullptr]);
  EXPECT_TRUE([panel saveValuesAndReturnError:nullptr]);
  EXPECT_TRUE([[host settings] isEqual:before]);
  EXPECT_EQ([[panel summaryInfo] count], 1U);
  [static_cast<id>(plugin) release];
}

INSTANTIATE_TEST_SUITE_P(, DamagedNib,
                         testing::Values(Damage{"IsNotXml", "<?xml", "no xml", "NSInvalidArgumentException"},
                                         Damage{"IsMissing", "<?xml", nullptr, "NSInvalidArgumentException"},
                                         Damage{"LacksAnOutlet", "<outlet property=\"labelMarginLimitRight\"",
                                                "<outlet property=\"other\"", "NSInvalidArgumentException"},
                                         Damage{"HasAForeignControl", "customClass=\"MorvaTTStepperKV2\"", "",
                                                "NSInvalidArgumentException"},
                                         Damage{"HasAChoiceTooMany", "</items>",
                                                "<menuItem title=\"More\" id=\"one-mo-re1\"/></items>",
                                                "NSRangeException"},
                                         Damage{"LacksItsView", "<outlet property=\"tandemTrimView\"",
                                                "<outlet property=\"other\"", ""}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace host
