#include "host/job/page_ranges.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

struct Written {
  std::string text;
  std::string normal;
};

class PageRangesFromText : public testing::TestWithParam<Written> {};

TEST_P(PageRangesFromText, AreSortedMergedAndStrippedOfMalformedParts) {
  EXPECT_EQ(pageRangesText(parsePageRanges(GetParam().text).ranges), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(
    PageRanges, PageRangesFromText,
    testing::Values(Written{"1-3,5", "1-3,5"}, Written{"5", "5"}, Written{"8-", "8-"}, Written{"-4", "1-4"},
                    Written{"-", ""}, Written{"5,1-3", "1-3,5"}, Written{"1-3,2", "1-3"},
                    Written{"1-3,4-6", "1-6"}, Written{"1-3,5-6", "1-3,5-6"}, Written{"2-9,3", "2-9"},
                    Written{"7-,3-8", "3-"}, Written{"", ""}, Written{",", ""}, Written{"one", ""},
                    Written{"0", ""}, Written{"3-1", ""}, Written{"1-2-3", ""}, Written{" 1 -3 , 7", "1-3,7"},
                    Written{"1 2", ""}, Written{"99999999999", ""}, Written{"x,2,,4-3,6-7", "2,6-7"}));

TEST(PageRanges, WithAnOpenEndReachTheLastPageOfAnyDocument) {
  const auto ranges = parsePageRanges("2,8-").ranges;
  ASSERT_EQ(ranges.size(), 2U);
  EXPECT_EQ(ranges[0].first, 2);
  EXPECT_EQ(ranges[0].last, 2);
  EXPECT_EQ(ranges[1].first, 8);
  EXPECT_EQ(ranges[1].last, PageRange::kEnd);
}

TEST(PageRanges, NameTheFirstMalformedPart) {
  const std::vector<std::pair<std::string, std::string>> wrong{{"", ""},
                                                               {" ", ""},
                                                               {"abc", "abc"},
                                                               {"x-5", "x-5"},
                                                               {"1,,2", ""},
                                                               {"1,", ""},
                                                               {"3-1", "3-1"},
                                                               {"2, 0 ,x", "0"},
                                                               {"1--2", "1--2"},
                                                               {"1.5", "1.5"},
                                                               {"1-2-3", "1-2-3"},
                                                               {"-", "-"},
                                                               {"1 2", "1 2"},
                                                               {"\u0661", "\u0661"},
                                                               {"99999999999", "99999999999"}};
  for (const auto& [text, part] : wrong) EXPECT_EQ(parsePageRanges(text).mistake, part) << text;
}

TEST(PageRanges, MayHaveOtherSeparatorsInTheDialog) {
  for (const char* text : {"1", "1-3,5,8-", "-2", "1 - 2; 4", " 7 ", "2:3", "5-5"})
    EXPECT_EQ(parsePageRanges(text, ",;:").mistake, std::nullopt) << text;
  for (const char* text : {"1;2", "1^2"}) EXPECT_EQ(parsePageRanges(text).mistake, text);
}

}  // namespace
}  // namespace tandemtrim::host
