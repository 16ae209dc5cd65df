#include "plugin/panel.hpp"
#include "tests/support/recording/platform.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;

class ReleaseOrder : public RecordingPlatformTest {
 protected:
  void logReleases() {
    bundle->onRelease = [this] { log.emplace_back("bundle released"); };
    callback->onRelease = [this] { log.emplace_back("callback released"); };
  }
};

// Reports its destruction as an object in the margin info dictionary.
class Probe : public platform::Object {
 public:
  explicit Probe(std::function<void()> onRelease) : Object("probe"), onRelease_(std::move(onRelease)) {}
  ~Probe() { onRelease_(); }
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

 private:
  std::function<void()> onRelease_;
};

TEST_F(ReleaseOrder, OfTheCommonInfoIsSettingInfoMarginInfoBundleCallback) {
  auto info = makeCommonInfo();
  logReleases();
  bundle.reset();
  callback.reset();
  const std::weak_ptr<const platform::Dictionary> settingInfo = info->settingInfoDictionary();
  info->marginInfoDictionary()["probe"] = std::make_shared<const Probe>([&] {
    log.emplace_back(settingInfo.expired() ? "setting info released, margin info released"
                                           : "margin info released first");
  });
  info.reset();
  EXPECT_THAT(log, ElementsAre("setting info released, margin info released", "bundle released",
                               "callback released"));
}

// The whole view controller, with its tickets and its nib, is destroyed before the common info.
TEST_F(ReleaseOrder, OfThePanelIsViewControllerThenCommonInfo) {
  openJob();
  auto panel = MorvaTTPdePanelKV2::initWithCallback(callback, bundle);
  ASSERT_TRUE(panel->panelView());
  EXPECT_EQ(panel->supportedPPDOptionKeys().size(), 7U);
  logReleases();
  bundle.reset();
  callback.reset();
  log.clear();
  panel.reset();
  EXPECT_THAT(log, ElementsAre("unsubscribe", "nib released", "bundle released", "callback released"));
}

// The test and seven tickets refer to the common info: all tickets exist while the subscriptions end, and no
// ticket when the nib is released.
TEST_F(ReleaseOrder, OfTheViewControllerIsSubscriptionsTicketsNib) {
  auto info = makeCommonInfo();
  auto controller = MorvaTTViewControllerKV2::initWithCommonInfo(info);
  controller->panelViewWithNibName("TandemTrim");
  long whenUnsubscribed = 0;
  center.onRemove = [&] { whenUnsubscribed = info.use_count(); };
  long whenNibWasReleased = 0;
  controller->keepLoadedNib(nullptr);
  struct Nib : platform::LoadedNib {
    Nib(const std::shared_ptr<MorvaTTCommonInfoKV2>& referred, long& result)
        : info(referred), count(result) {}
    ~Nib() override { count = info.use_count(); }
    const std::shared_ptr<MorvaTTCommonInfoKV2>& info;
    long& count;
  };
  controller->keepLoadedNib(std::make_unique<Nib>(info, whenNibWasReleased));
  controller.reset();
  EXPECT_EQ(whenUnsubscribed, 8);
  EXPECT_EQ(whenNibWasReleased, 1);
}

TEST_F(ReleaseOrder, KeepsTheCommonInfoWhileAnotherRefersToIt) {
  openJob();
  auto panel = MorvaTTPdePanelKV2::initWithCallback(callback, bundle);
  const auto info = panel->commonInfo();
  panel.reset();
  EXPECT_EQ(info.use_count(), 1);
  EXPECT_EQ(*info->defaultValid()->as<std::string>(), "Off");
}

}  // namespace
}  // namespace tandemtrim::test
