#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/print_settings.hpp"

namespace tandemtrim::platform::linux {

/// The key is empty.
inline constexpr OSStatus kInvalidParameter = -50;
/// The value under the key is locked and stays as it is.
inline constexpr OSStatus kValueLocked = -30878;

/// The print settings of one job, in the order in which their keys were first stored. Keys compare exactly,
/// letter case included. A missing key is not an error: getting it sets nullopt, removing it succeeds. A copy
/// is independent of its original.
class PrintSettings : public platform::PrintSettings {
 public:
  struct Entry {
    std::string key;
    std::string value;
  };

  OSStatus PMPrintSettingsGetValue(std::string_view key, std::optional<std::string>& value) const override;

  /// A new value keeps the place of the one that it replaces.
  OSStatus PMPrintSettingsSetValue(std::string_view key, const std::optional<std::string>& value,
                                   bool locked) override;

  [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return entries_; }

 private:
  std::vector<Entry> entries_;
  std::set<std::string, std::less<>> lockedKeys_;
};

}  // namespace tandemtrim::platform::linux
