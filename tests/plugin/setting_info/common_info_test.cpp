#include <fstream>

#include "plugin/setting_info/setting_names.hpp"
#include "tests/support/core_test.hpp"

namespace tandemtrim::test {
namespace {

using platform::ObjectRef;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class CommonInfo : public CoreTest {
 protected:
  // The common info of a property list with this text.
  std::shared_ptr<MorvaTTCommonInfoKV2> makeCommonInfoOf(const std::string& propertyList) {
    openJob();
    std::ofstream(*bundle->settingInfoPath) << propertyList;
    return MorvaTTCommonInfoKV2::initWithCallback(callback, bundle);
  }
};

TEST_F(CommonInfo, IsNotMadeAndLoadsNothingWithoutACallbackOrABundle) {
  openJob();
  EXPECT_THAT(MorvaTTCommonInfoKV2::initWithCallback(nullptr, bundle), IsNull());
  EXPECT_THAT(MorvaTTCommonInfoKV2::initWithCallback(callback, nullptr), IsNull());
  EXPECT_THAT(bundle->log, IsEmpty());
  EXPECT_EQ(bundle.use_count(), 1);
  EXPECT_EQ(callback.use_count(), 1);
}

TEST_F(CommonInfo, IsNotMadeWithoutASettingInfoDictionary) {
  openJob();
  const std::optional<std::string> paths[] = {std::nullopt, "/nowhere", "/", ""};
  for (const auto& path : paths) {
    bundle->settingInfoPath = path;
    EXPECT_THAT(MorvaTTCommonInfoKV2::initWithCallback(callback, bundle), IsNull()) << path.value_or("none");
  }
  for (const char* text : {"", "no property list", "<plist><array/></plist>", "<plist><string/></plist>"}) {
    EXPECT_THAT(makeCommonInfoOf(text), IsNull()) << text;
  }
  EXPECT_EQ(bundle.use_count(), 1);
  EXPECT_EQ(callback.use_count(), 1);
}

TEST_F(CommonInfo, KeepsItsBundleAndItsCallback) {
  const auto info = makeCommonInfo();
  EXPECT_EQ(info->bundle(), bundle);
  EXPECT_EQ(info->callback(), callback);
  EXPECT_EQ(bundle.use_count(), 2);
  EXPECT_EQ(callback.use_count(), 2);
}

TEST_F(CommonInfo, ReadsItsResourceOnceWhenItIsMade) {
  const auto info = makeCommonInfo();
  EXPECT_THAT(bundle->log, ElementsAre("TandemTrimKV2-SettingInfo.plist"));
  std::ofstream(*bundle->settingInfoPath) << "something else";
  EXPECT_THAT(info->defaultValid(), NotNull());
  EXPECT_THAT(bundle->log, ElementsAre("TandemTrimKV2-SettingInfo.plist"));
}

TEST_F(CommonInfo, WritesNothingIntoThePrintSettings) {
  const auto info = makeCommonInfo();
  EXPECT_TRUE(info->isReady());
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(CommonInfo, RequestsTextsOfTheDefaultTableWithoutAFallback) {
  const auto info = makeCommonInfo();
  bundle->log.clear();
  EXPECT_EQ(info->localizedString("TopMargin"), "Above");
  EXPECT_EQ(info->localizedString("Missing"), "Missing");
  EXPECT_THAT(bundle->log, ElementsAre(R"(text of "TopMargin" or "")", R"(text of "Missing" or "")"));
}

TEST_F(CommonInfo, ReturnsTheHostsCurrentPrintSettings) {
  const auto info = makeCommonInfo();
  EXPECT_EQ(info->currentPrintSettings(), &settings());
  FakePrintSettings other;
  callback->current = &other;
  EXPECT_EQ(info->currentPrintSettings(), &other);
  callback->current = nullptr;
  EXPECT_EQ(info->currentPrintSettings(), nullptr);
}

// A getter of the common info, and the key path of the object that it returns.
struct Getter {
  const char* mainKey;
  const char* subKey;
  ObjectRef (*get)(const MorvaTTCommonInfoKV2&);
};

using Info = MorvaTTCommonInfoKV2;
const Getter kGetters[] = {
    {"DefaultValue", "Valid", [](const Info& info) { return info.defaultValid(); }},
    {"DefaultValue", "ImageDirection", [](const Info& info) { return info.defaultImageDirection(); }},
    {"DefaultValue", "Position", [](const Info& info) { return info.defaultPosition(); }},
    {"DefaultValue", "MarginTop", [](const Info& info) { return info.defaultMarginValue("Top"); }},
    {"DefaultValue", "MarginBottom", [](const Info& info) { return info.defaultMarginValue("Bottom"); }},
    {"DefaultValue", "MarginLeft", [](const Info& info) { return info.defaultMarginValue("Left"); }},
    {"DefaultValue", "MarginRight", [](const Info& info) { return info.defaultMarginValue("Right"); }},
    {"DefaultValue", "MarginMin", [](const Info& info) { return info.defaultMarginMin(); }},
    {"DefaultValue", "MarginMax", [](const Info& info) { return info.defaultMarginMax(); }},
    {"DefaultValue", "MarginLimit", [](const Info& info) { return info.defaultMarginLimit(); }},
    {"TicketKey", "Valid", [](const Info& info) { return info.ticketKeyValid(); }},
    {"TicketKey", "ImageDirection", [](const Info& info) { return info.ticketKeyImageDirection(); }},
    {"TicketKey", "Position", [](const Info& info) { return info.ticketKeyPosition(); }},
    {"TicketKey", "MarginTop", [](const Info& info) { return info.ticketKeyMargin("Top"); }},
    {"TicketKey", "MarginBottom", [](const Info& info) { return info.ticketKeyMargin("Bottom"); }},
    {"TicketKey", "MarginLeft", [](const Info& info) { return info.ticketKeyMargin("Left"); }},
    {"TicketKey", "MarginRight", [](const Info& info) { return info.ticketKeyMargin("Right"); }},
    {"ID", "PanelKind", [](const Info& info) { return info.panelKindID(); }},
    {"Wording", "MinLabelForValueRange",
     [](const Info& info) { return info.minLabelForIntegerValueRange(); }},
    {"Wording", "MaxLabelForValueRange",
     [](const Info& info) { return info.maxLabelForIntegerValueRange(); }},
};

TEST_F(CommonInfo, ReturnsTheObjectsOfThePropertyListItself) {
  const auto info = makeCommonInfo();
  for (const auto& [mainKey, subKey, get] : kGetters) {
    const auto main = platform::find(*info->settingInfoDictionary(), mainKey);
    const auto stored = platform::find(*main->as<platform::Dictionary>(), subKey);
    ASSERT_THAT(stored, NotNull()) << mainKey << '.' << subKey;
    EXPECT_EQ(get(*info), stored) << mainKey << '.' << subKey;
  }
}

TEST_F(CommonInfo, ReturnsObjectsOfAnyKindUnconverted) {
  for (const auto& [mainKey, subKey, get] : kGetters) {
    if (std::string_view(subKey).starts_with("MarginM")) continue;
    scene.settingInfo[std::string(mainKey) + '.' + subKey] = "<array/>";
  }
  scene.ppdAttributes->clear();
  scene.settingInfo["DefaultValue.MarginLimit"] = "<string>30</string>";
  const auto info = makeCommonInfo();
  EXPECT_THAT(info->defaultValid()->as<platform::Array>(), NotNull());
  EXPECT_THAT(info->defaultMarginValue("Top")->as<platform::Array>(), NotNull());
  EXPECT_EQ(*info->defaultMarginLimit()->as<std::string>(), "30");
}

TEST_F(CommonInfo, IsReadyAndReturnsNullWhereThePropertyListLacksEveryEntry) {
  for (auto& [keyword, value] : *scene.ppdAttributes) value = "0";
  const char* lists[] = {
      "<plist><dict/></plist>",
      "<plist><dict><key>DefaultValue</key><dict/><key>TicketKey</key><dict/><key>ID</key><dict/></dict></"
      "plist>",
      "<plist><dict><key>DefaultValue</key><string/><key>TicketKey</key><array/><key>ID</key><true/>"
      "<key>Wording</key><integer>1</integer></dict></plist>",
      "<plist><dict><key>PanelKind</key><dict><key>ID</key><string>kind</string></dict></dict></plist>",
  };
  for (const char* list : lists) {
    const auto info = makeCommonInfoOf(list);
    ASSERT_THAT(info, NotNull()) << list;
    EXPECT_TRUE(info->isReady());
    for (const auto& getter : kGetters) EXPECT_THAT(getter.get(*info), IsNull()) << getter.subKey;
    EXPECT_EQ(info->marginLimit("Top")->integerValue(), 0);
  }
}

TEST_F(CommonInfo, KnowsTheFourMarginNamesOnly) {
  for (const char* keyPath : {"DefaultValue.", "TicketKey."})
    scene.settingInfo[keyPath] = "<integer>1</integer>";
  const auto info = makeCommonInfo();
  for (const char* name : {"top", "TOP", "MarginTop", "", "Top ", "Valid", "Limit", "Top.Limit"}) {
    EXPECT_THAT(info->defaultMarginValue(name), IsNull()) << name;
    EXPECT_THAT(info->ticketKeyMargin(name), IsNull()) << name;
    EXPECT_THAT(info->marginLimit(name), IsNull()) << name;
    EXPECT_FALSE(info->TTCIIsValidMarginName(name)) << name;
  }
  for (const char* name : {"Top", "Bottom", "Left", "Right"}) EXPECT_TRUE(info->TTCIIsValidMarginName(name));
}

}  // namespace
}  // namespace tandemtrim::test
