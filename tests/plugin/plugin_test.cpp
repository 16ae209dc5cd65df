#include "plugin/plugin.hpp"

#include <type_traits>

#include "plugin/panel.hpp"
#include "tests/support/recording/platform.hpp"

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

TEST_F(Plugin, RefusesANullBundleAndKeepsTheOneThatItHas) {
  EXPECT_FALSE(plugin.initWithBundle(nullptr));
  EXPECT_THAT(plugin.bundle(), IsNull());
  plugin.initWithBundle(bundle);
  EXPECT_FALSE(plugin.initWithBundle(nullptr));
  EXPECT_EQ(plugin.bundle(), bundle);
}

TEST_F(Plugin, ReleasesItsBundle) {
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

TEST_F(Plugin, ReturnsPanelsThatOnlyTheirListRefersTo) {
  plugin.initWithBundle(bundle);
  auto first = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  auto second = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  ASSERT_THAT(first, NotNull());
  ASSERT_THAT(second, NotNull());
  EXPECT_EQ(first->size(), 1U);
  EXPECT_EQ(second->size(), 1U);
  EXPECT_EQ(callback.use_count(), 3);
  first.reset();
  EXPECT_EQ(callback.use_count(), 2);
  second.reset();
  EXPECT_EQ(callback.use_count(), 1);
}

TEST_F(Plugin, MakesPanelsThatShareNothing) {
  plugin.initWithBundle(bundle);
  const auto first = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  const auto second = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  auto& one = dynamic_cast<MorvaTTPdePanelKV2&>(*first->front());
  auto& other = dynamic_cast<MorvaTTPdePanelKV2&>(*second->front());
  one.commonInfo()->marginInfoDictionary().clear();
  EXPECT_THAT(other.commonInfo()->marginLimit("Top"), NotNull());
  EXPECT_NE(one.panelKind(), other.panelKind());
  EXPECT_NE(&one.supportedPPDOptionKeys(), &other.supportedPPDOptionKeys());
}

TEST_F(Plugin, ShowsAPanelWithoutShowingAnother) {
  plugin.initWithBundle(bundle);
  const auto first = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  const auto second = plugin.PDEPanelsForType(kPrintDialogExtensionType, callback);
  EXPECT_THAT(first->front()->panelView(), NotNull());
  nib.margins[kTop].textBox.text = "9";
  second->front()->saveValuesAndReturnError(nullptr);
  EXPECT_EQ(settings().values["MVTopMargin"], "5");
  first->front()->saveValuesAndReturnError(nullptr);
  EXPECT_EQ(settings().values["MVTopMargin"], "9");
}

template <class... Classes>
constexpr bool areDeletedAsAWhole = ((std::has_virtual_destructor_v<Classes> ||
                                      std::is_final_v<Classes>)&&...);

// A pointer to a class that can be derived from may own an object of the derived class.
TEST(ThePartsOfAPanel, HaveVirtualDestructorsOrAreFinal) {
  EXPECT_TRUE((areDeletedAsAWhole<MorvaTTPdePluginKV2, MorvaTTPdePanelKV2, MorvaTTCommonInfoKV2>));
  EXPECT_TRUE((areDeletedAsAWhole<MorvaTTViewControllerKV2, MorvaTTPrintTicketManagerKV2>));
  EXPECT_TRUE((areDeletedAsAWhole<MorvaTTPrintTicketKV2, MorvaTTPrintTicketValidKV2,
                                  MorvaTTPrintTicketPopUpKV2, MorvaTTPrintTicketMarginKV2>));
}

}  // namespace
}  // namespace tandemtrim::test
