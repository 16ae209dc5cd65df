#include <functional>
#include <random>

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {
namespace {

class PanelInAHost : public HostedPanelTest {};

TEST_F(PanelInAHost, IsNamedInTheUsersLanguage) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(textOf([panel panelName]), textOf(localized(@"TandemTrim")));
}

TEST_F(PanelInAHost, ReturnsTheSameObjectAsItsKindEachTime) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(textOf([panel panelKind]), "com.morva.printing.pde.tandemtrim.panel");
  EXPECT_EQ([panel panelKind], [panel panelKind]);
}

TEST_F(PanelInAHost, ReturnsTheSameSevenKeywordsEachTimeAndLogsThem) {
  ASSERT_NO_FATAL_FAILURE(open());
  testing::internal::CaptureStderr();
  NSArray* keys = [panel supportedPPDOptionKeys];
  EXPECT_EQ([panel supportedPPDOptionKeys], keys);
  const auto log = testing::internal::GetCapturedStderr();
  EXPECT_TRUE([keys isEqual:(@[
                      @"MVTandemTrim", @"MVImageDirectionPriority", @"MVPrintPosition", @"MVTopMargin",
                      @"MVBottomMargin", @"MVLeftMargin", @"MVRightMargin"
                    ])]);
  const auto line = "] supportedPPDOptionKeys:=NSArray(" + textOf([keys description]) + ")\n";
  const auto first = log.find(line);
  ASSERT_NE(first, std::string::npos) << log;
  EXPECT_NE(log.find(line, first + 1), std::string::npos) << log;
}

TEST_F(PanelInAHost, NeverTouchesTheError) {
  ASSERT_NO_FATAL_FAILURE(show());
  NSError* const untouched = [NSError errorWithDomain:NSPOSIXErrorDomain code:1 userInfo:nil];
  NSError* error = untouched;
  EXPECT_TRUE([panel saveValuesAndReturnError:&error]);
  EXPECT_TRUE([panel restoreValuesAndReturnError:&error]);
  EXPECT_EQ(error, untouched);
}

TEST_F(PanelInAHost, ReturnsTheSameControllerAndCommonInfo) {
  ASSERT_NO_FATAL_FAILURE(open());
  EXPECT_EQ(textOf(NSStringFromClass([[panel viewController] class])), "MorvaTTViewControllerKV2");
  EXPECT_EQ(textOf(NSStringFromClass([[panel commonInfo] class])), "MorvaTTCommonInfoKV2");
  EXPECT_EQ([panel viewController], [panel viewController]);
  EXPECT_EQ([[panel viewController] commonInfo], [panel commonInfo]);
}

TEST_F(PanelInAHost, LeavesTheJobAloneUntilItsViewIsRequested) {
  store(@"MVTopMargin", @"foreign");
  ASSERT_NO_FATAL_FAILURE(open());
  NSDictionary* before = [[[host settings] copy] autorelease];
  EXPECT_TRUE([panel restoreValuesAndReturnError:nullptr]);
  EXPECT_TRUE(save());
  [panel willShow];
  EXPECT_TRUE([[host settings] isEqual:before]);
}

// A failure names the seed; TANDEM_TRIM_SEED repeats it.
TEST_F(PanelInAHost, ServesItsOperationsInRandomOrder) {
  const char* given = std::getenv("TANDEM_TRIM_SEED");
  const auto seed = given == nullptr ? std::random_device{}() : static_cast<unsigned>(std::stoul(given));
  SCOPED_TRACE("TANDEM_TRIM_SEED=" + std::to_string(seed));
  std::mt19937 random(seed);
  NSError* error = nil;
  const std::vector<std::function<bool()>> operations{
      [&] { return [[panel panelName] length] > 0; },
      [&] { return [[panel panelKind] length] > 0; },
      [&] { return [panel panelView] == [panel panelView]; },
      [&] { return [[panel summaryInfo] count] == ([stored(@"MVTandemTrim") isEqual:@"On"] ? 7 : 1); },
      [&] { return [panel willShow], true; },
      [&] { return static_cast<bool>([panel shouldHide]); },
      [&] { return static_cast<bool>([panel shouldShowHelp]); },
      [&] { return [[panel supportedPPDOptionKeys] count] == 7; },
      [&] { return static_cast<bool>([panel shouldPrint]); },
      [&] { return static_cast<bool>([panel saveValuesAndReturnError:&error]); },
      [&] { return static_cast<bool>([panel restoreValuesAndReturnError:&error]); },
  };
  for (int round = 0; round < 30; ++round) {
    store(@"MVTandemTrim", round % 2 == 0 ? @"On" : @"Off");
    ASSERT_NO_FATAL_FAILURE(open());
    for (int call = 0; call < 40; ++call) {
      const auto operation = random() % operations.size();
      EXPECT_TRUE(operations[operation]()) << "operation " << operation;
      EXPECT_EQ(error, nil);
    }
    EXPECT_EQ([[host settings] count], 7U);
    close();
  }
}

}  // namespace
}  // namespace host
