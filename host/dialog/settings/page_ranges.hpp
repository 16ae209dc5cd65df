#pragma once

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// Some pages of a document, counted from 1.
struct PageRange {
  int first = 1;
  int last = kEnd;

  static constexpr int kEnd = std::numeric_limits<int>::max();
};

/// Reads "1-3,5,8-" as lp does; parts that are no range are skipped.
std::vector<PageRange> parsePageRanges(std::string_view text);

/// Whether the text is one or more ranges of pages, such as "1-3, 5; 8-", as the dialog's entry takes them.
bool arePageRanges(const std::string& text);

/// "1-3,5,8-" for these pages, sorted and without repetition, as a print server requires.
std::string pageRangesText(std::vector<PageRange> ranges);

}  // namespace tandemtrim::host
