#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class ViewController : public ViewTest {};

TEST_F(ViewController, IsNotMadeWithoutCommonInfoOrTickets) {
  EXPECT_THAT(MorvaTTViewControllerKV2::initWithCommonInfo(nullptr), IsNull());
  const auto notReady = makeCommonInfoOf<ReadyForSome>();
  EXPECT_THAT(MorvaTTViewControllerKV2::initWithCommonInfo(notReady), IsNull());
  EXPECT_EQ(notReady.use_count(), 1);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(ViewController, OwnsItsTicketsAndOnlyRefersToTheCommonInfo) {
  makeController();
  EXPECT_EQ(controller->commonInfo(), info.get());
  EXPECT_THAT(controller->ticket(), NotNull());
  EXPECT_FALSE(controller->viewIsInited());
  EXPECT_EQ(info.use_count(), 8) << "the test and seven tickets";
  controller.reset();
  EXPECT_EQ(info.use_count(), 1);
}

TEST_F(ViewController, DoesNothingButReportSuccessBeforeTheViewIsSetUp) {
  connectOutlets();
  controller->TTVCInitializeTicket();
  forget();
  EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
  EXPECT_TRUE(controller->saveNonPPDSettingsToPrintSettings());
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(ViewController, RestoresAndSavesAllTicketsOnceTheViewIsSetUp) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  forget();
  EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
  EXPECT_EQ(settings().log.size(), 7U);
  EXPECT_EQ(settings().log.front(), "get MVTandemTrim");
  forget();
  EXPECT_TRUE(controller->saveNonPPDSettingsToPrintSettings());
  EXPECT_THAT(
      settings().log,
      ElementsAre("set MVTandemTrim=Off", "remove MVImageDirectionPriority", "remove MVPrintPosition",
                  "set MVTopMargin=5", "set MVBottomMargin=6", "set MVLeftMargin=7", "set MVRightMargin=8"));
}

TEST_F(ViewController, ReportsSuccessWhereThePrintSettingsFail) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  settings().readStatus = -1;
  settings().writeStatus = -1;
  EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
  EXPECT_TRUE(controller->saveNonPPDSettingsToPrintSettings());
}

TEST_F(ViewController, EndsItsFourSubscriptionsAndNoOtherWhenItIsDestroyed) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  int other = 0;
  center.addObserver(
      &other, [](const auto&) {}, "Other", nullptr);
  EXPECT_EQ(center.subscriptions.size(), 5U);
  controller.reset();
  EXPECT_EQ(center.subscriptions.size(), 1U);
  EXPECT_EQ(std::ranges::count(log, "unsubscribe"), 1);
}

TEST_F(ViewController, EndsNoSubscriptionWhenItsViewWasNeverSetUpAndStillReleasesItsTickets) {
  makeController();
  controller.reset();
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(info.use_count(), 1);
}

TEST_F(ViewController, LeavesTheCheckBoxAndTheGreyingAloneWhenItRestoresDefaults) {
  scene.stored["MVTandemTrim"] = "On";
  ASSERT_NO_FATAL_FAILURE(loadView());
  controller->restoreNonPPDSettingsFromPrintSettings();
  forget();
  controller->setDefaultValue(nullptr);
  EXPECT_EQ(nib.tandemTrimValid.current, 1);
  EXPECT_EQ(log.size(), 10U);
  EXPECT_THAT(log, testing::Not(testing::Contains(testing::HasSubstr("enabled"))));
  EXPECT_THAT(settings().log, IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::test
