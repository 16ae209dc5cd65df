#include "host/dialog/preview/printed_pages.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

// The pages of a nine-page document that are printed, in order.
std::vector<int> pagesOf(const Options& options) {
  constexpr int kEnd = 10;
  const auto printed = printedPages(options);
  std::vector<int> pages;
  for (auto page = printed.from(1, kEnd); page; page = printed.from(*page + 1, kEnd)) pages.push_back(*page);
  // The search backwards finds the same pages.
  std::vector<int> backwards;
  for (auto page = printed.upTo(kEnd - 1); page; page = printed.upTo(*page - 1))
    backwards.insert(backwards.begin(), *page);
  EXPECT_EQ(pages, backwards);
  return pages;
}

TEST(PrintedPages, AreThoseThatTheOptionsSelect) {
  using testing::ElementsAre;
  using testing::IsEmpty;
  EXPECT_THAT(pagesOf({{"copies", "2"}}), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_THAT(pagesOf({{"page-ranges", "3"}}), ElementsAre(3));
  EXPECT_THAT(pagesOf({{"Page-Ranges", "8-,2-4,3"}}), ElementsAre(2, 3, 4, 8, 9));
  EXPECT_THAT(pagesOf({{"page-set", "even"}}), ElementsAre(2, 4, 6, 8));
  EXPECT_THAT(pagesOf({{"page-set", "odd"}, {"page-ranges", "2-6"}}), ElementsAre(3, 5));
  EXPECT_THAT(pagesOf({{"page-set", "even"}, {"page-ranges", "3,5"}}), IsEmpty());
  EXPECT_THAT(pagesOf({{"page-ranges", "10-"}}), IsEmpty());
  EXPECT_THAT(pagesOf({{"page-ranges", "nothing"}}), IsEmpty());
}

TEST(PrintedPages, MayReachTheLargestPageNumber) {
  const auto printed = printedPages({{"page-ranges", "2147483647-"}, {"page-set", "even"}});
  EXPECT_FALSE(printed.from(1, PageRange::kEnd));
  EXPECT_FALSE(printed.upTo(PageRange::kEnd));
}

}  // namespace
}  // namespace tandemtrim::host
