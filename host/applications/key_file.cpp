#include "host/applications/key_file.hpp"

#include <algorithm>

#include "host/failure.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

Failure oddLine(const std::string& file, std::size_t number, std::string_view line) {
  return Failure(file + ", line " + std::to_string(number) + ": \"" + shortText(line) +
                 "\" is neither a [group], nor key=value within one, nor a comment; correct or remove it");
}

}  // namespace

std::vector<SettingsEntry> readEntries(std::string_view text, const std::string& file) {
  std::vector<SettingsEntry> entries;
  std::string group;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const auto end = text.find('\n');
    const auto line = trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[' && line.back() == ']' && line.size() > 2) {
      group = line.substr(1, line.size() - 2);
      continue;
    }
    const auto equals = line.find('=');
    if (group.empty() || equals == 0 || equals == std::string_view::npos) throw oddLine(file, number, line);
    entries.push_back(
        {group, std::string(trimmed(line.substr(0, equals))), std::string(trimmed(line.substr(equals + 1)))});
  }
  return entries;
}

std::optional<std::string> valueOf(const std::vector<SettingsEntry>& entries, std::string_view group,
                                   std::string_view key) {
  const auto last = std::find_if(entries.rbegin(), entries.rend(), [&](const SettingsEntry& entry) {
    return entry.group == group && entry.key == key;
  });
  return last == entries.rend() ? std::nullopt : std::optional(last->value);
}

std::vector<std::string> partsOf(std::string_view list, char separator) {
  std::vector<std::string> parts;
  while (!list.empty()) {
    const auto end = list.find(separator);
    if (const auto part = trimmed(list.substr(0, end)); !part.empty()) parts.emplace_back(part);
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
  }
  return parts;
}

}  // namespace tandemtrim::host
