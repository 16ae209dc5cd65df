#include "host/job/lpoptions.hpp"

#include <algorithm>
#include <vector>

#include <strings.h>

namespace tandemtrim::host {
namespace {

constexpr std::string_view kBlanks = " \t\v\f\r\n";
constexpr std::string_view kLineEnds = "\r\n";
// libcups truncates longer lines.
constexpr std::size_t kLongestLine = 8191;

// A destination's line: "Dest Morva/draft keyword=value ...", or Default instead of Dest.
struct Entry {
  std::string directive;
  std::string printer;
  std::optional<std::string> instance;
  Options options;
};

bool isSameWord(const std::string& one, const std::string& other) {
  return strcasecmp(one.c_str(), other.c_str()) == 0;
}

// With their line ends.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = text.find_first_of(kLineEnds);
    const auto length = end == std::string_view::npos ? text.size() : end + 1;
    lines.push_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return lines;
}

// The first # begins a comment, unless it follows a backslash.
std::string withoutComment(std::string_view line) {
  std::string text(line);
  const auto mark = text.find('#');
  if (mark == std::string::npos) return text;
  if (mark > 0 && text[mark - 1] == '\\') return text.erase(mark - 1, 1);
  return text.erase(mark);
}

std::string takeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  std::string word(text.substr(0, text.find_first_of(kBlanks)));
  text.remove_prefix(word.size());
  return word;
}

std::optional<Entry> entryOf(std::string_view line) {
  const auto text = withoutComment(line);
  std::string_view rest = text;
  Entry entry;
  entry.directive = takeWord(rest);
  if (!isSameWord(entry.directive, "Dest") && !isSameWord(entry.directive, "Default")) return std::nullopt;
  entry.printer = takeWord(rest);
  if (const auto slash = entry.printer.find('/'); slash != std::string::npos) {
    entry.instance = entry.printer.substr(slash + 1);
    entry.printer.erase(slash);
  }
  entry.options = readOptions(std::string(rest));
  return entry;
}

bool isOf(const Entry& entry, const DestinationName& destination) {
  return isSameWord(entry.printer, destination.printer) &&
         entry.instance.has_value() == destination.instance.has_value() &&
         isSameWord(entry.instance.value_or(""), destination.instance.value_or(""));
}

std::string lineOf(const Entry& entry) {
  auto line = entry.directive + ' ' + entry.printer;
  if (entry.instance) line += '/' + *entry.instance;
  for (const auto& option : entry.options) line += ' ' + optionText(option);
  if (const auto mark = line.find('#'); mark != std::string::npos) line.insert(mark, 1, '\\');
  return line;
}

}  // namespace

std::optional<std::string> withSavedOptions(std::string_view text, const DestinationName& destination,
                                            const Options& options) {
  std::string changed;
  bool isFound = false;
  bool fits = true;
  const auto add = [&](Entry entry, std::string_view end) {
    for (const auto& option : options) setOption(entry.options, option);
    const auto line = lineOf(entry);
    isFound = true;
    if (line.size() > kLongestLine) fits = false;
    changed += line;
    changed += end.empty() ? "\n" : end;
  };
  for (const auto line : linesOf(text)) {
    if (auto entry = entryOf(line); entry && isOf(*entry, destination)) {
      add(*std::move(entry), line.substr(line.find_last_not_of(kLineEnds) + 1));
    } else {
      changed += line;
    }
  }
  if (!isFound) {
    if (!changed.empty() && kLineEnds.find(changed.back()) == std::string_view::npos) changed += '\n';
    add({"Dest", destination.printer, destination.instance, {}}, "");
  }
  return fits ? std::optional(changed) : std::nullopt;
}

std::string withoutSavedOptions(std::string_view text, const DestinationName& destination) {
  std::string rest;
  for (const auto line : linesOf(text)) {
    auto entry = entryOf(line);
    if (!entry || !isOf(*entry, destination)) {
      rest += line;
    } else if (isSameWord(entry->directive, "Default")) {
      entry->options.clear();
      rest += lineOf(*entry) + '\n';
    }
  }
  return rest;
}

Options optionsSavedIn(std::string_view text, const DestinationName& destination) {
  Options options;
  for (const auto line : linesOf(text)) {
    const auto entry = entryOf(line);
    if (!entry || !isOf(*entry, destination)) continue;
    for (const auto& option : entry->options) setOption(options, option);
  }
  return options;
}

}  // namespace tandemtrim::host
