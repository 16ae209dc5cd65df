#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// A line "key=value" of a desktop's settings file, and the "[group]" that it is in.
struct SettingsEntry {
  std::string group;
  std::string key;
  std::string value;

  friend bool operator==(const SettingsEntry&, const SettingsEntry&) = default;
};

/// The entries of the text in their order. Failure, which names `file` and the line, for the first wrong
/// line; desktops then ignore the whole file.
std::vector<SettingsEntry> readEntries(std::string_view text, const std::string& file);

/// The entry's value; nullopt without such an entry. The last of several entries applies, as in all such
/// files.
std::optional<std::string> valueOf(const std::vector<SettingsEntry>& entries, std::string_view group,
                                   std::string_view key);

/// The parts of a list like "gnome;gtk;" or, with another separator, "GNOME:Classic", without empty ones.
std::vector<std::string> partsOf(std::string_view list, char separator = ';');

}  // namespace tandemtrim::host
