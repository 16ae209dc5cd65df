#include <memory>
#include <set>
#include <string>
#include <vector>

#include <cups/ppd.h>
#include <gmock/gmock.h>

#include "plugin/setting_info/settings.hpp"
#include "tests/resources/files.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::resources {
namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using Texts = std::vector<std::string>;

const std::string kPpd = SAMPLES "/MorvaTandemKV2.ppd";

struct Closed {
  void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};

class SamplePrinter : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(ppd) << "libcups cannot open " << kPpd; }

  // The value of the one attribute of this keyword.
  std::string attribute(std::string_view keyword) const {
    const auto* found = ppdFindAttr(ppd.get(), std::string(keyword).c_str(), nullptr);
    EXPECT_TRUE(found != nullptr) << keyword;
    if (found == nullptr) return {};
    EXPECT_EQ(ppdFindNextAttr(ppd.get(), found->name, nullptr), nullptr) << "a second " << keyword;
    return found->value;
  }

  std::int64_t maximum(const Setting& margin) const { return std::stoll("0" + attribute(margin.ppdKey)); }

  ppd_option_t* option(const std::string& keyword) const {
    auto* found = ppdFindOption(ppd.get(), keyword.c_str());
    EXPECT_TRUE(found != nullptr) << "no option " << keyword;
    return found;
  }

  Texts choices(const std::string& keyword) const {
    const auto* found = option(keyword);
    Texts names;
    for (int i = 0; found != nullptr && i < found->num_choices; ++i)
      names.emplace_back(found->choices[i].choice);
    return names;
  }

  // The keyword under which a setting is stored.
  std::string keyword(std::string_view subKey) const {
    return textAt(settingInfo, TTCIPlistMainKeyTicketKey, subKey);
  }

  std::unique_ptr<ppd_file_t, Closed> ppd{ppdOpenFile(kPpd.c_str())};
  platform::Dictionary settingInfo = propertyListAt(kSettingInfo);
};

TEST_F(SamplePrinter, PassesTheCheckOfCups) {
  const auto [status, output] = run(CUPSTESTPPD " -W filters '" + kPpd + "' 2>&1");
  EXPECT_EQ(status, 0) << output;
}

TEST_F(SamplePrinter, NamesThePlugInAndSendsDocumentsToItsFilterAsPdf) {
  EXPECT_THAT(attribute("APDialogExtension"), EndsWith("/TandemTrim.bundle"));
  const Texts filters(ppd->filters, ppd->filters + ppd->num_filters);
  EXPECT_THAT(filters, UnorderedElementsAre("application/vnd.cups-pdf 0 morvatandem",
                                            "application/pdf 0 morvatandem"));
}

TEST_F(SamplePrinter, HasTheSizesOfPaper) {
  std::set<std::string> sizes;
  for (int i = 0; i < ppd->num_sizes; ++i) sizes.insert(ppd->sizes[i].name);
  EXPECT_THAT(sizes, UnorderedElementsAre("A3", "A4", "A5", "Letter"));
}

TEST_F(SamplePrinter, HasTheChoicesOfThePanelsMenusAndNoOthers) {
  EXPECT_THAT(choices(keyword(TTCIPlistSubKeyValid)),
              UnorderedElementsAre(TTCITandemTrimOn, TTCITandemTrimOff));
  EXPECT_THAT(choices(keyword(TTCIPlistSubKeyImageDirection)),
              UnorderedElementsAre(TTVCPopUpNameDirectionLEF, TTVCPopUpNameDirectionSEF));
  EXPECT_THAT(choices(keyword(TTCIPlistSubKeyPosition)),
              UnorderedElementsAre(TTVCPopUpNamePositionLeft, TTVCPopUpNamePositionCenter,
                                   TTVCPopUpNamePositionRight));
}

TEST_F(SamplePrinter, HasAChoiceForEachMarginThatThePanelAllowsAndNoOther) {
  const auto minimum = integerAt(settingInfo, TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginMin);
  for (const auto& margin : kMargins) {
    Texts range;
    for (auto value = minimum; value <= maximum(margin); ++value) range.push_back(std::to_string(value));
    EXPECT_THAT(choices(keyword(margin.subKey)), ElementsAreArray(range)) << margin.subKey;
  }
}

TEST_F(SamplePrinter, HasADifferentMaximumForEachSideWithinThePanelsRange) {
  const auto minimum = integerAt(settingInfo, TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginMin);
  const auto greatest = integerAt(settingInfo, TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginMax);
  // The property list's limit, for printers without a maximum, differs from all of them, too, so that a user
  // sees which limit applies.
  std::set<std::int64_t> limits{
      integerAt(settingInfo, TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginLimit)};
  for (const auto& margin : kMargins) {
    const auto limit = maximum(margin);
    EXPECT_TRUE(minimum < limit && limit < greatest) << margin.ppdKey << " is " << limit;
    EXPECT_TRUE(limits.insert(limit).second) << "another limit is " << limit << " like " << margin.ppdKey;
  }
}

TEST_F(SamplePrinter, HasTheDefaultsOfThePanel) {
  for (const auto subKey : {TTCIPlistSubKeyValid, TTCIPlistSubKeyImageDirection, TTCIPlistSubKeyPosition}) {
    const auto* found = option(keyword(subKey));
    ASSERT_TRUE(found != nullptr);
    EXPECT_EQ(found->defchoice, textAt(settingInfo, TTCIPlistMainKeyDefaultValue, subKey));
  }
  for (const auto& margin : kMargins) {
    const auto* found = option(keyword(margin.subKey));
    ASSERT_TRUE(found != nullptr);
    EXPECT_EQ(found->defchoice,
              std::to_string(integerAt(settingInfo, TTCIPlistMainKeyDefaultValue, margin.subKey)));
  }
}

TEST_F(SamplePrinter, HasNoOtherOptionOfTandemTrim) {
  std::set<std::string> keywords;
  const auto settings = platform::find(settingInfo, TTCIPlistMainKeyTicketKey);
  ASSERT_TRUE(settings && settings->as<platform::Dictionary>());
  for (const auto& entry : *settings->as<platform::Dictionary>()) keywords.insert(keyword(entry.first));

  std::set<std::string> found;
  for (auto* each = ppdFirstOption(ppd.get()); each != nullptr; each = ppdNextOption(ppd.get())) {
    if (std::string_view(each->keyword).starts_with("MV")) found.insert(each->keyword);
  }
  EXPECT_EQ(found, keywords);
}

}  // namespace
}  // namespace tandemtrim::resources
