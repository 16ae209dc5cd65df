#include "plugin/plugin.hpp"

#include "tests/support/recording_platform.hpp"

namespace tandemtrim::test {
namespace {

using platform::kPrintDialogExtensionType;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class Plugin : public RecordingPlatformTest {
 protected:
  Plugin() { openJob(); }
  MorvaTTPdePluginKV2 plugin;
};

TEST_F(Plugin, KeepsTheBundleThatItIsGiven) {
  EXPECT_THAT(plugin.bundle(), IsNull());
  EXPECT_TRUE(plugin.initWithBundle(bundle));
  EXPECT_EQ(plugin.bundle(), bundle);
  EXPECT_EQ(bundle.use_count(), 2);
  EXPECT_THAT(bundle->log, IsEmpty());
}

TEST_F(Plugin, RefusesToBeWithoutABundleAndKeepsWhatItHas) {
  EXPECT_FALSE(plugin.initWithBundle(nullptr));
  EXPECT_THAT(plugin.bundle(), IsNull());
  plugin.initWithBundle(bundle);
  EXPECT_FALSE(plugin.initWithBundle(nullptr));
  EXPECT_EQ(plugin.bundle(), bundle);
}

TEST_F(Plugin, LetsItsBundleGo) {
  {
    MorvaTTPdePluginKV2 other;
    other.initWithBundle(bundle);
  }
  EXPECT_EQ(bundle.use_count(), 1);
}

TEST_F(Plugin, MakesNothingForAnotherTypeOrWithoutACallback) {
  plugin.initWithBundle(bundle);
  for (const std::optional<std::string_view> type :
       {std::optional<std::string_view>(), {""}, {"bdb091f4-e57f-11d3-b5cc-0050e4603277"}, {"panel"}}) {
    EXPECT_THAT(plugin.PDEPanelsForType(type, callback), IsNull());
  }
  EXPECT_THAT(plugin.PDEPanelsForType(kPrintDialogExtensionType, nullptr), IsNull());
  EXPECT_THAT(bundle->log, IsEmpty());
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Plugin, MakesNoListWhenThePanelCannotBeMade) {
  EXPECT_THAT(plugin.PDEPanelsForType(kPrintDialogExtensionType, callback), IsNull());
  plugin.initWithBundle(bundle);
  bundle->settingInfoPath.reset();
  EXPECT_THAT(plugin.PDEPanelsForType(kPrintDialogExtensionType, callback), IsNull());
  EXPECT_EQ(callback.use_count(), 1);
}

TEST_F(Plugin, LeavesTheOnlyReferenceToEachNewPanelInItsList) {
  plugin.initWithBundle(bundle);
  auto first = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  auto second = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  ASSERT_THAT(first, NotNull());
  ASSERT_THAT(second, NotNull());
  EXPECT_EQ(first->size(), 1U);
  EXPECT_EQ(callback.use_count(), 3);
  first.reset();
  EXPECT_EQ(callback.use_count(), 2);
  second.reset();
  EXPECT_EQ(callback.use_count(), 1);
}

}  // namespace
}  // namespace tandemtrim::test
