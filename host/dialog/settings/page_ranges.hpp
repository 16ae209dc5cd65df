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

/// Reads "1-3,5,8-" as lp takes it; what is no range is left out.
std::vector<PageRange> parsePageRanges(std::string_view text);

/// "1-3,5,8-" for these pages, each once and in their order: a print server takes nothing else.
std::string pageRangesText(std::vector<PageRange> ranges);

}  // namespace tandemtrim::host
