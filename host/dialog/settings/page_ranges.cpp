#include "host/dialog/settings/page_ranges.hpp"

#include <algorithm>
#include <charconv>
#include <optional>

namespace tandemtrim::host {
namespace {

// The page of this number; `missing` for an empty text; none for anything else.
std::optional<int> parsePage(std::string_view text, int missing) {
  if (text.empty()) return missing;
  int page = 0;
  const auto* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, page);
  if (read.ec != std::errc() || read.ptr != end || page < 1) return std::nullopt;
  return page;
}

}  // namespace

std::vector<PageRange> parsePageRanges(std::string_view text) {
  std::vector<PageRange> ranges;
  while (!text.empty()) {
    const auto range = text.substr(0, text.find(','));
    text.remove_prefix(std::min(text.size(), range.size() + 1));
    const auto dash = range.find('-');
    const bool single = dash == std::string_view::npos;
    const auto first = parsePage(range.substr(0, dash), 1);
    const auto last = single ? first : parsePage(range.substr(dash + 1), PageRange::kEnd);
    if (!range.empty() && first && last && *first <= *last) ranges.push_back({*first, *last});
  }
  return ranges;
}

std::string pageRangesText(std::vector<PageRange> ranges) {
  std::ranges::sort(ranges, {}, &PageRange::first);
  std::vector<PageRange> merged;
  for (const auto& range : ranges) {
    // The page behind the last one is counted from below, since there is none behind the end.
    if (merged.empty() || merged.back().last < range.first - 1) {
      merged.push_back(range);
    } else {
      merged.back().last = std::max(merged.back().last, range.last);
    }
  }
  std::string text;
  for (const auto& [first, last] : merged) {
    text += (text.empty() ? "" : ",") + std::to_string(first);
    if (last != first) text += '-' + (last == PageRange::kEnd ? "" : std::to_string(last));
  }
  return text;
}

}  // namespace tandemtrim::host
