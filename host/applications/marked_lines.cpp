#include "host/applications/marked_lines.hpp"

#include <algorithm>
#include <array>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::string_view kBeginMark =
    "# Lines of tandem-trim, which \"tandem-trim --applications off\" removes";
constexpr std::string_view kEndMark = "# End of the lines of tandem-trim";

// The text after the mark, in the order of Before.
constexpr std::array<std::string_view, 4> kBefore{"", ", with the line break before them", ", with this file",
                                                  ", with this file and its folder"};

// The offsets at which a line and the next one begin.
struct Place {
  std::size_t begin;
  std::size_t end;
};

Place find(std::string_view text, std::string_view beginning, std::size_t from = 0) {
  for (auto begin = from; begin < text.size();) {
    const auto end = std::min(text.find('\n', begin), text.size() - 1) + 1;
    if (text.substr(begin, end - begin).starts_with(beginning)) return {begin, end};
    begin = end;
  }
  return {text.size(), text.size()};
}

std::string_view lineEndOf(std::string_view line) { return line.ends_with("\r\n") ? "\r\n" : "\n"; }

Before beforeOf(std::string_view mark) {
  mark.remove_suffix(lineEndOf(mark).size());
  mark.remove_prefix(kBeginMark.size());
  for (std::size_t index = kBefore.size(); --index > 0;) {
    if (mark == kBefore.at(index)) return static_cast<Before>(index);
  }
  return Before::file;
}

}  // namespace

MarkedText partMarkedLines(std::string_view text, const std::string& file) {
  const auto begin = find(text, kBeginMark);
  const auto end = find(text, kEndMark, begin.end);
  const auto isThere = [&](const Place& mark) { return mark.begin != text.size(); };
  if (isThere(begin) != isThere(find(text, kEndMark)) || isThere(begin) != isThere(end)) {
    const auto missing = isThere(begin) ? kEndMark : kBeginMark;
    throw Failure(file + ": the line \"" + std::string(missing) +
                  "\" is missing; put it back, or remove the other mark and the lines between them by hand");
  }
  if (!isThere(begin)) return {std::string(text)};
  const auto mark = text.substr(begin.begin, begin.end - begin.begin);
  const auto before = beforeOf(mark);
  auto first = text.substr(0, begin.begin);
  const auto rest = text.substr(end.end);
  if (before == Before::openLine && rest.empty()) first.remove_suffix(lineEndOf(mark).size());
  return {std::string(first) + std::string(rest), true, before};
}

std::string withMarkedLines(const std::string& own, const std::vector<std::string>& lines, Before before) {
  const std::string lineEnd = own.find("\r\n") == std::string::npos ? "\n" : "\r\n";
  std::string text = own;
  if (!own.empty() && !own.ends_with('\n')) {
    before = Before::openLine;
    text += lineEnd;
  }
  text += std::string(kBeginMark) + std::string(kBefore.at(static_cast<std::size_t>(before))) + lineEnd;
  for (const auto& line : lines) text += line + lineEnd;
  return text + std::string(kEndMark) + lineEnd;
}

}  // namespace tandemtrim::host
