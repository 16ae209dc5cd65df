#include "host/dialog/settings/page_ranges.hpp"

#include <algorithm>
#include <charconv>
#include <optional>
#include <regex>

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

std::optional<PageRange> parseRange(std::string_view range) {
  const auto dash = range.find('-');
  const bool single = dash == std::string_view::npos;
  const auto first = parsePage(range.substr(0, dash), 1);
  const auto last = single ? first : parsePage(range.substr(dash + 1), PageRange::kEnd);
  if (range.empty() || !first || !last || *first > *last) return std::nullopt;
  return PageRange{*first, *last};
}

}  // namespace

std::vector<PageRange> parsePageRanges(std::string_view text) {
  std::vector<PageRange> ranges;
  while (!text.empty()) {
    const auto range = text.substr(0, text.find(','));
    text.remove_prefix(std::min(text.size(), range.size() + 1));
    if (const auto known = parseRange(range)) ranges.push_back(*known);
  }
  return ranges;
}

// GTK takes what it does not understand for page 1.
bool arePageRanges(const std::string& text) {
  static const std::regex blanks("^ +| +$| *([-,;:]) *");
  const auto plain = std::regex_replace(text, blanks, "$1");
  for (std::string_view rest = plain;;) {
    const auto end = rest.find_first_of(",;:");
    if (!parseRange(rest.substr(0, end))) return false;
    if (end == std::string_view::npos) return true;
    rest.remove_prefix(end + 1);
  }
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
