#include <stdexcept>

#include "tests/model/manager_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class ManagerConstruction : public CoreTest {};

TEST_F(ManagerConstruction, ReturnsNullWithoutCommonInfo) {
  EXPECT_THAT(MorvaTTPrintTicketManagerKV2::initWithCommonInfo(nullptr), IsNull());
}

TEST_F(ManagerConstruction, StoresDefaultsInAFreshJobInTheOrderOfTheTickets) {
  const auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
  ASSERT_THAT(manager, NotNull());
  EXPECT_EQ(settings().log, seedingOf(7));
}

TEST_F(ManagerConstruction, GivesEachTicketItsDefaultAndKeyAndItsOwnReferenceToTheCommonInfo) {
  const auto info = makeCommonInfo();
  auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(info);
  const auto tickets = ticketsOf(*manager);
  for (std::size_t index = 0; index < tickets.size(); ++index) {
    EXPECT_EQ(tickets[index]->defaultValue(), kSettings[index].defaultText);
    EXPECT_EQ(tickets[index]->key(), kSettings[index].key);
    EXPECT_EQ(tickets[index]->commonInfo(), info);
  }
  EXPECT_EQ(info.use_count(), 8);
  manager.reset();
  EXPECT_EQ(info.use_count(), 1);
}

TEST_F(ManagerConstruction, TakesItsKeysFromTheSettingInfo) {
  for (const auto& setting : kSettings) {
    scene.settingInfo["TicketKey." + setting.subKey] = "<string>Key of " + setting.subKey + "</string>";
  }
  const auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
  for (const auto& setting : kSettings) {
    EXPECT_EQ(settings().values["Key of " + setting.subKey], setting.defaultText);
  }
}

TEST_F(ManagerConstruction, MakesTheDecimalTextOfEachMarginDefault) {
  scene.settingInfo["DefaultValue.MarginTop"] = "<real>2.5</real>";
  scene.settingInfo["DefaultValue.MarginBottom"] = "<real>5.0</real>";
  scene.settingInfo["DefaultValue.MarginLeft"] = "<true/>";
  scene.settingInfo["DefaultValue.MarginRight"] = "<integer>-7</integer>";
  const auto manager = MorvaTTPrintTicketManagerKV2::initWithCommonInfo(makeCommonInfo());
  EXPECT_EQ(manager->ticketMarginTop()->defaultValue(), "2.5");
  EXPECT_EQ(manager->ticketMarginBottom()->defaultValue(), "5");
  EXPECT_EQ(manager->ticketMarginLeft()->defaultValue(), "1");
  EXPECT_EQ(manager->ticketMarginRight()->defaultValue(), "-7");
}

// All fourteen values are read before the first ticket is made.
class ManagerWithFaultySettingInfo : public ManagerConstruction,
                                     public testing::WithParamInterface<std::size_t> {
 protected:
  void expectRaisesWithNothingStored() {
    const auto info = makeCommonInfo();
    EXPECT_THROW((void)MorvaTTPrintTicketManagerKV2::initWithCommonInfo(info), std::invalid_argument);
    EXPECT_THAT(settings().log, IsEmpty());
    EXPECT_EQ(info.use_count(), 1);
  }
  [[nodiscard]] bool isMargin() const { return GetParam() >= 3; }
  const Setting& setting = kSettings.at(GetParam());
};

TEST_P(ManagerWithFaultySettingInfo, RaisesForAMissingDefault) {
  scene.settingInfo.erase("DefaultValue." + setting.subKey);
  expectRaisesWithNothingStored();
}

TEST_P(ManagerWithFaultySettingInfo, RaisesForAMissingKey) {
  scene.settingInfo.erase("TicketKey." + setting.subKey);
  expectRaisesWithNothingStored();
}

TEST_P(ManagerWithFaultySettingInfo, RaisesForADefaultOfTheWrongKind) {
  scene.settingInfo["DefaultValue." + setting.subKey] =
      isMargin() ? "<string>5</string>" : "<integer>5</integer>";
  expectRaisesWithNothingStored();
}

TEST_P(ManagerWithFaultySettingInfo, RaisesForAKeyThatIsNotAText) {
  scene.settingInfo["TicketKey." + setting.subKey] = "<integer>5</integer>";
  expectRaisesWithNothingStored();
}

INSTANTIATE_TEST_SUITE_P(Settings, ManagerWithFaultySettingInfo, testing::Range<std::size_t>(0, 7),
                         [](const auto& test) { return kSettings.at(test.param).ticketName; });

// All tickets up to the one that cannot be made store their defaults; the later ones are never made.
TEST_F(ManagerConstruction, ReturnsNullWhenATicketCannotBeMadeAndStopsThere) {
  for (std::size_t made = 0; made < kSettings.size(); ++made) {
    const auto info = makeCommonInfoOf<ReadyForSome>();
    info->readyTimes = static_cast<int>(made);
    EXPECT_THAT(MorvaTTPrintTicketManagerKV2::initWithCommonInfo(info), IsNull()) << made;
    EXPECT_EQ(settings().log, seedingOf(made + 1)) << made;
    EXPECT_EQ(info.use_count(), 1) << made;
  }
}

TEST_F(ManagerConstruction, StoresOnlyTheOnOffSettingWithCommonInfoThatIsNotReady) {
  const auto info = makeCommonInfoOf<ReadyForSome>();
  EXPECT_THAT(MorvaTTPrintTicketManagerKV2::initWithCommonInfo(info), IsNull());
  EXPECT_THAT(settings().values, ElementsAre(testing::Pair("MVTandemTrim", "Off")));
}

}  // namespace
}  // namespace tandemtrim::test
