#include <stdexcept>
#include <utility>

#include <cups/ppd.h>

#include "tests/support/core_test.hpp"

namespace tandemtrim::test {
namespace {

using platform::Dictionary;
using platform::makeObject;
using platform::ObjectRef;
using testing::ElementsAre;
using testing::IsNull;
using testing::Optional;
using testing::Pair;

constexpr const char* kTopMaximum = "MVMaxTandemTrimMarginTop";

// Scene: minimum 0, maximum 60, limit without a PPD value 30.
class MarginLimits : public CoreTest {
 protected:
  // The common info of a printer with this value as the maximum of its top margin.
  std::shared_ptr<MorvaTTCommonInfoKV2> makeCommonInfoWithTop(const std::string& value) {
    scene.ppdAttributes->insert_or_assign(kTopMaximum, value);
    return makeCommonInfo();
  }
};

TEST_F(MarginLimits, AreTheOnlyObjectsInTheEntriesOfTheSides) {
  const auto info = makeCommonInfo();
  const std::pair<const char*, std::int64_t> limits[] = {
      {"Top", 50}, {"Bottom", 40}, {"Left", 20}, {"Right", 10}};
  EXPECT_EQ(info->marginInfoDictionary().size(), 4U);
  for (const auto& [name, limit] : limits) {
    const auto entry = platform::find(info->marginInfoDictionary(), name);
    EXPECT_THAT(*entry->as<Dictionary>(), ElementsAre(Pair("Limit", info->marginLimit(name))));
    EXPECT_EQ(info->marginLimit(name)->integerValue(), limit);
    EXPECT_EQ(info->marginLimit(name)->stringValue(), std::to_string(limit));
  }
}

TEST_F(MarginLimits, AreReadFromTheStoredDictionaryItself) {
  const auto info = makeCommonInfo();
  const auto limit = number(3);
  info->marginInfoDictionary()["Inner"] = makeObject(Dictionary{{"Limit", limit}});
  info->marginInfoDictionary()["Empty"] = makeObject(Dictionary{});
  EXPECT_TRUE(info->TTCIIsValidMarginName("Inner"));
  EXPECT_EQ(info->marginLimit("Inner"), limit);
  EXPECT_THAT(info->marginLimit("Empty"), IsNull());
}

TEST_F(MarginLimits, ReplaceEarlierEntriesWhenTheyAreRegisteredAgain) {
  const auto info = makeCommonInfo();
  info->marginInfoDictionary()["Top"] = makeObject(Dictionary{{"Limit", number(3)}, {"Other", number(4)}});
  info->TTCIRegisterMarginInfo();
  EXPECT_EQ(info->marginInfoDictionary().at("Top")->as<Dictionary>()->size(), 1U);
  EXPECT_EQ(info->marginLimit("Top")->integerValue(), 50);
}

TEST_F(MarginLimits, AreTheBoundsObjectsForPpdValuesBeyondThem) {
  const std::string nines(20, '9');
  for (const std::string& value : {std::string("61"), nines, '+' + nines}) {
    const auto info = makeCommonInfoWithTop(value);
    EXPECT_EQ(info->marginLimit("Top"), info->defaultMarginMax()) << value;
  }
  for (const std::string& value : {std::string("-1"), '-' + nines}) {
    const auto info = makeCommonInfoWithTop(value);
    EXPECT_EQ(info->marginLimit("Top"), info->defaultMarginMin()) << value;
  }
}

TEST_F(MarginLimits, AreThePropertyListsObjectWhereThePpdHasNoLimit) {
  scene.ppdAttributes.reset();
  const auto info = makeCommonInfo();
  for (const char* name : {"Top", "Bottom", "Left", "Right"})
    EXPECT_EQ(info->marginLimit(name), info->defaultMarginLimit());
}

// libcups never makes such an attribute, but a host may pass one.
TEST_F(MarginLimits, CountAPpdAttributeWithoutAValueAsMissing) {
  openJob();
  auto& value = ppdFindAttr(callback->ppd.get(), kTopMaximum, nullptr)->value;
  auto* const read = std::exchange(value, nullptr);
  const auto info = MorvaTTCommonInfoKV2::initWithCallback(callback, bundle);
  value = read;
  EXPECT_EQ(info->marginLimit("Top"), info->defaultMarginLimit());
}

TEST_F(MarginLimits, AreTheMinimumsObjectWhereNeitherThePpdNorThePropertyListHasALimit) {
  scene.ppdAttributes->erase(kTopMaximum);
  scene.settingInfo.erase("DefaultValue.MarginLimit");
  const auto info = makeCommonInfo();
  EXPECT_EQ(info->marginLimit("Top"), info->defaultMarginMin());
}

TEST_F(MarginLimits, CanBeAStringObjectOfThePropertyList) {
  scene.settingInfo["DefaultValue.MarginMax"] = "<string>45 mm</string>";
  const auto info = makeCommonInfo();
  EXPECT_EQ(info->marginLimit("Top"), info->defaultMarginMax());
  EXPECT_EQ(*info->marginLimit("Top")->as<std::string>(), "45 mm");
  EXPECT_EQ(info->marginLimit("Bottom")->integerValue(), 40);
}

TEST_F(MarginLimits, AreReadOnceWhenTheCommonInfoIsMade) {
  const auto info = makeCommonInfo();
  const auto limit = info->marginLimit("Top");
  callback->ppd.reset();
  EXPECT_EQ(info->TTCIPpdFindAttribute(kTopMaximum), std::nullopt);
  EXPECT_EQ(info->marginLimit("Top"), limit);
}

TEST_F(MarginLimits, RaiseWhereTheyWouldBeAMissingBound) {
  struct Case {
    std::vector<const char*> missing;
    const char* ppdValue;
  };
  const Case cases[] = {
      {{"MarginMax"}, "5"},
      {{"MarginMin"}, "-5"},
      {{"MarginMin", "MarginMax", "MarginLimit"}, nullptr},
      {{"MarginMin", "MarginLimit"}, nullptr},
  };
  for (const auto& [missing, ppdValue] : cases) {
    const auto before = scene.settingInfo;
    for (const char* key : missing) scene.settingInfo.erase(std::string("DefaultValue.") + key);
    scene.ppdAttributes.emplace();
    if (ppdValue != nullptr) scene.ppdAttributes->emplace(kTopMaximum, ppdValue);
    EXPECT_THROW((void)makeCommonInfo(), std::invalid_argument) << missing.front();
    EXPECT_EQ(bundle.use_count(), 1);
    scene.settingInfo = before;
  }
}

TEST_F(MarginLimits, AreTheGivenObjectWithinTheBounds) {
  const auto info = makeCommonInfo();
  const ObjectRef candidates[] = {number(0),        number(1),          number(60),
                                  makeObject(60.9), makeObject("12mm"), makeObject(true)};
  for (const auto& candidate : candidates) EXPECT_EQ(info->TTCIVerifyMarginLimit(candidate), candidate);
  EXPECT_EQ(info->TTCIVerifyMarginLimit(nullptr), info->defaultMarginMin());
}

TEST_F(MarginLimits, CheckTheMinimumFirstWhereTheBoundsCross) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>20</integer>";
  scene.settingInfo["DefaultValue.MarginMax"] = "<integer>10</integer>";
  const auto info = makeCommonInfo();
  for (const int below : {0, 10, 15, 19}) {
    EXPECT_EQ(info->TTCIVerifyMarginLimit(number(below)), info->defaultMarginMin()) << below;
  }
  for (const int other : {20, 21, 100}) {
    EXPECT_EQ(info->TTCIVerifyMarginLimit(number(other)), info->defaultMarginMax()) << other;
  }
}

TEST_F(MarginLimits, CountAMissingBoundAsZeroAndReturnNullForIt) {
  scene.settingInfo.erase("DefaultValue.MarginMin");
  scene.settingInfo.erase("DefaultValue.MarginMax");
  for (auto& [keyword, value] : *scene.ppdAttributes) value = "0";
  const auto info = makeCommonInfo();
  const auto zero = number(0);
  EXPECT_EQ(info->TTCIVerifyMarginLimit(zero), zero);
  EXPECT_THAT(info->TTCIVerifyMarginLimit(number(1)), IsNull());
  EXPECT_THAT(info->TTCIVerifyMarginLimit(number(-1)), IsNull());
  EXPECT_THAT(info->TTCIVerifyMarginLimit(nullptr), IsNull());
}

TEST_F(MarginLimits, ComeFromTheFirstPpdAttributeOfTheirKeyword) {
  const auto info = makeCommonInfoWithTop("25\"\n*" + std::string(kTopMaximum) + ": \"35");
  EXPECT_THAT(info->TTCIPpdFindAttribute(kTopMaximum), Optional(std::string("25")));
}

TEST_F(MarginLimits, ComeFromTheUnchangedTextOfThePpdAttribute) {
  for (const std::string value : {"25", " 25mm", "", "abc", "\xC3\xA4"}) {
    EXPECT_EQ(makeCommonInfoWithTop(value)->TTCIPpdFindAttribute(kTopMaximum), value);
  }
  EXPECT_EQ(makeCommonInfoWithTop("25\xE9")->TTCIPpdFindAttribute(kTopMaximum), std::nullopt);
  EXPECT_EQ(makeCommonInfo()->TTCIPpdFindAttribute("MVMaxTandemTrimMarginNowhere"), std::nullopt);
  scene.ppdAttributes.reset();
  EXPECT_EQ(makeCommonInfo()->TTCIPpdFindAttribute(kTopMaximum), std::nullopt);
}

TEST_F(MarginLimits, CountAnEmptyPpdValueAsZeroAndOneThatIsNotUtf8AsMissing) {
  scene.settingInfo["DefaultValue.MarginMin"] = "<integer>2</integer>";
  const auto empty = makeCommonInfoWithTop("");
  EXPECT_EQ(empty->marginLimit("Top"), empty->defaultMarginMin());
  const auto foreign = makeCommonInfoWithTop("25\xE9");
  EXPECT_EQ(foreign->marginLimit("Top"), foreign->defaultMarginLimit());
}

}  // namespace
}  // namespace tandemtrim::test
