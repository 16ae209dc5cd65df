#include "adapters/linux/print_settings.hpp"

#include <algorithm>

namespace tandemtrim::platform::linux {
namespace {

template <class Entries>
auto findKey(Entries& entries, std::string_view key) {
  return std::find_if(entries.begin(), entries.end(), [key](const auto& entry) { return entry.key == key; });
}

}  // namespace

OSStatus PrintSettings::PMPrintSettingsGetValue(std::string_view key,
                                                std::optional<std::string>& value) const {
  if (key.empty()) return kInvalidParameter;
  const auto entry = findKey(entries_, key);
  value = entry == entries_.end() ? std::nullopt : std::optional(entry->value);
  return kNoError;
}

OSStatus PrintSettings::PMPrintSettingsSetValue(std::string_view key, const std::optional<std::string>& value,
                                                bool locked) {
  if (key.empty()) return kInvalidParameter;
  if (lockedKeys_.contains(key)) return kValueLocked;
  const auto entry = findKey(entries_, key);
  const bool isStored = entry != entries_.end();
  if (!value) {
    if (isStored) entries_.erase(entry);
    return kNoError;
  }
  if (isStored) {
    entry->value = *value;
  } else {
    entries_.push_back({std::string(key), *value});
  }
  if (locked) lockedKeys_.emplace(key);
  return kNoError;
}

}  // namespace tandemtrim::platform::linux
