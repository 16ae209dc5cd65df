#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform {

/// Result of a print-settings operation: 0 is success, anything else a failure.
using OSStatus = std::int32_t;
inline constexpr OSStatus kNoError = 0;

/// The settings of one print job: string values under keywords. It belongs to the host.
class PrintSettings {
 public:
  virtual ~PrintSettings() = default;

  /// Sets `value` to the value stored under `key`, or to nullopt if nothing is stored there; `value` is only
  /// meaningful on success.
  virtual OSStatus PMPrintSettingsGetValue(std::string_view key, std::optional<std::string>& value) const = 0;

  /// Stores `value` under `key`, or removes the key if `value` is nullopt. A value stored as `locked` cannot
  /// be changed later.
  virtual OSStatus PMPrintSettingsSetValue(std::string_view key, const std::optional<std::string>& value,
                                           bool locked) = 0;
};

}  // namespace tandemtrim::platform
