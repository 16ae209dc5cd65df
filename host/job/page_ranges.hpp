#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// Consecutive pages of a document, counted from 1. kEnd is the document's last page.
struct PageRange {
  int first = 1;
  int last = kEnd;

  static constexpr int kEnd = std::numeric_limits<int>::max();
};

/// The result of reading a list of pages.
struct PageList {
  std::vector<PageRange> ranges;
  /// The first part of the list that is not a range, if any.
  std::optional<std::string> mistake;
};

/// Reads "3", "3-5", "3-" or "-5", ignoring blanks around each number; nullopt for any other text, for page 0
/// and for a range that ends before it begins.
std::optional<PageRange> parsePageRange(std::string_view text);

/// Reads "1-3,5,8-": ranges with one of the separators between them.
PageList parsePageRanges(std::string_view text, std::string_view separators = ",");

/// "1-3,5,8-" for these pages, sorted and without repetition, as a print server requires.
std::string pageRangesText(std::vector<PageRange> ranges);

}  // namespace tandemtrim::host
