#include "host/job/page_ranges.hpp"

#include <algorithm>
#include <charconv>

namespace tandemtrim::host {
namespace {

std::string_view withoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The page number in the text; `missing` for an empty text; nullopt for anything else.
std::optional<int> parsePage(std::string_view text, int missing) {
  text = withoutBlanks(text);
  if (text.empty()) return missing;
  int page = 0;  // also after an error
  const auto* const end = text.data() + text.size();
  if (std::from_chars(text.data(), end, page).ptr != end || page < 1) return std::nullopt;
  return page;
}

}  // namespace

std::optional<PageRange> parsePageRange(std::string_view text) {
  const auto dash = text.find('-');
  const auto first = parsePage(text.substr(0, dash), 1);
  const auto last =
      dash == std::string_view::npos ? first : parsePage(text.substr(dash + 1), PageRange::kEnd);
  const bool hasNumber = text.find_first_not_of(" -") != std::string_view::npos;
  if (!hasNumber || !first || !last || *first > *last) return std::nullopt;
  return PageRange{*first, *last};
}

PageList parsePageRanges(std::string_view text, std::string_view separators) {
  PageList list;
  for (;;) {
    const auto end = text.find_first_of(separators);
    const auto part = text.substr(0, end);
    if (const auto range = parsePageRange(part)) {
      list.ranges.push_back(*range);
    } else if (!list.mistake) {
      list.mistake = withoutBlanks(part);
    }
    if (end == std::string_view::npos) return list;
    text.remove_prefix(end + 1);
  }
}

std::string pageRangesText(std::vector<PageRange> ranges) {
  std::ranges::sort(ranges, {}, &PageRange::first);
  std::vector<PageRange> merged;
  for (const auto& range : ranges) {
    // Not last + 1, which would overflow for kEnd.
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
