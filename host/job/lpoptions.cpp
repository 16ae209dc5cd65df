#include "host/job/lpoptions.hpp"

#include <algorithm>

#include <strings.h>

namespace tandemtrim::host {
namespace {

constexpr std::string_view kBlanks = " \t\v\f\r\n";
constexpr std::string_view kLineEnds = "\r\n";
// libcups splits longer lines.
constexpr std::size_t kLongestLine = 8191;

// A destination's line: "Dest Morva/draft keyword=value ...", or Default instead of Dest.
struct Entry {
  std::string directive;
  DestinationName destination;
  std::string options;
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

// The part of a line that libcups reads: up to a zero byte, and without blanks at its end. The first # begins
// a comment, unless it follows a backslash.
std::string readPart(std::string_view line) {
  std::string text(line.substr(0, line.find('\0')));
  const auto mark = text.find('#');
  if (mark != std::string::npos) {
    const bool isQuoted = std::string_view(text).substr(0, mark).ends_with('\\');
    isQuoted ? text.erase(mark - 1, 1) : text.erase(mark);
  }
  return text.erase(text.find_last_not_of(kBlanks) + 1);
}

std::string takeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  std::string word(text.substr(0, text.find_first_of(kBlanks)));
  text.remove_prefix(word.size());
  return word;
}

std::optional<Entry> entryOf(std::string_view line) {
  const auto text = readPart(line);
  std::string_view rest = text;
  Entry entry;
  entry.directive = takeWord(rest);
  if (!isSameWord(entry.directive, "Dest") && !isSameWord(entry.directive, "Default")) return std::nullopt;
  auto& [printer, instance] = entry.destination;
  printer = takeWord(rest);
  if (printer.empty()) return std::nullopt;
  if (const auto slash = printer.find('/'); slash != std::string::npos) {
    instance = printer.substr(slash + 1);
    printer.erase(slash);
  }
  // Without the first blank, as in libcups: a brace matters only at the very beginning.
  entry.options = rest.substr(std::min<std::size_t>(rest.size(), 1));
  return entry;
}

bool isLineOfDefault(const Entry& entry) { return isSameWord(entry.directive, "Default"); }

// As libcups reads the text: the rest of a line that is too long is another line.
std::vector<Entry> entriesIn(std::string_view text) {
  std::vector<Entry> entries;
  for (auto line : linesOf(text)) {
    for (; !line.empty(); line.remove_prefix(std::min(line.size(), kLongestLine)))
      if (auto entry = entryOf(line.substr(0, kLongestLine))) entries.push_back(*std::move(entry));
  }
  return entries;
}

bool isOf(const Entry& entry, const DestinationName& destination) {
  const auto& [printer, instance] = entry.destination;
  return isSameWord(printer, destination.printer) &&
         instance.has_value() == destination.instance.has_value() &&
         isSameWord(instance.value_or(""), destination.instance.value_or(""));
}

std::string lineOf(const Entry& entry, const Options& options) {
  const auto& [printer, instance] = entry.destination;
  auto line = entry.directive + ' ' + printer;
  if (instance) line += '/' + *instance;
  for (const auto& option : options) line += ' ' + optionText(option);
  if (const auto mark = line.find('#'); mark != std::string::npos) line.insert(mark, 1, '\\');
  return line;
}

}  // namespace

Options savedOptions(std::span<const std::string> texts, const std::optional<DestinationName>& destination,
                     SavedLines lines) {
  std::vector<std::string> options;
  for (const auto& text : texts) {
    for (auto& entry : entriesIn(text)) {
      if (destination ? !isOf(entry, *destination) : entry.destination.instance.has_value()) continue;
      options.push_back(std::move(entry.options));
      if (lines == SavedLines::first) break;
    }
  }
  return readOptions(options);
}

std::optional<DestinationName> defaultDestination(std::string_view text) {
  const auto entries = entriesIn(text);
  const auto found = std::ranges::find_if(entries, isLineOfDefault);
  if (found == entries.end() || found->destination.printer.empty()) return std::nullopt;
  return found->destination;
}

std::optional<std::string> withSavedOptions(std::string_view text, const DestinationName& destination,
                                            const Options& options, const std::vector<std::string>& removed) {
  std::string changed;
  bool isFound = false;
  bool fits = true;
  const auto add = [&](const Entry& entry, std::string_view end) {
    auto all = withoutKeywords(readOptions(entry.options), removed);
    for (const auto& option : options) setOption(all, option);
    const auto line = lineOf(entry, all);
    isFound = true;
    if (line.size() > kLongestLine) fits = false;
    changed += line;
    changed += end.empty() ? "\n" : end;
  };
  for (const auto line : linesOf(text)) {
    if (const auto entry = entryOf(line); entry && isOf(*entry, destination)) {
      add(*entry, line.substr(line.find_last_not_of(kLineEnds) + 1));
    } else {
      changed += line;
    }
  }
  if (!isFound && !options.empty()) {
    if (!changed.empty() && kLineEnds.find(changed.back()) == std::string_view::npos) changed += '\n';
    add({"Dest", destination, ""}, "");
  }
  return fits ? std::optional(changed) : std::nullopt;
}

std::string withoutSavedOptions(std::string_view text, const DestinationName& destination) {
  std::string rest;
  for (const auto line : linesOf(text)) {
    const auto entry = entryOf(line);
    if (!entry || !isOf(*entry, destination)) {
      rest += line;
    } else if (isLineOfDefault(*entry)) {
      rest += lineOf(*entry, {}) + '\n';
    }
  }
  return rest;
}

}  // namespace tandemtrim::host
