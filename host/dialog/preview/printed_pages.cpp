#include "host/dialog/preview/printed_pages.hpp"

#include <algorithm>

namespace tandemtrim::host {
namespace {

bool isIn(PrintedPages::Set set, int page) {
  return set == PrintedPages::Set::all || (page % 2 == 0) == (set == PrintedPages::Set::even);
}

}  // namespace

std::optional<int> PrintedPages::from(int page, int end) const {
  std::optional<int> nearest;
  for (const auto& range : ranges) {
    int first = std::max(page, range.first);
    if (first < end && !isIn(set, first)) ++first;
    if (first <= range.last && first < end) nearest = std::min(first, nearest.value_or(first));
  }
  return nearest;
}

std::optional<int> PrintedPages::upTo(int page) const {
  std::optional<int> nearest;
  for (const auto& range : ranges) {
    int last = std::min(page, range.last);
    if (!isIn(set, last)) --last;
    if (last >= range.first) nearest = std::max(last, nearest.value_or(last));
  }
  return nearest;
}

PrintedPages printedPages(const Options& options) {
  PrintedPages printed;
  for (const auto& [keyword, value] : options) {
    if (isSameKeyword(keyword, "page-ranges")) printed.ranges = parsePageRanges(value).ranges;
    if (!isSameKeyword(keyword, "page-set")) continue;
    if (isSameKeyword(value, "even")) printed.set = PrintedPages::Set::even;
    if (isSameKeyword(value, "odd")) printed.set = PrintedPages::Set::odd;
  }
  return printed;
}

}  // namespace tandemtrim::host
