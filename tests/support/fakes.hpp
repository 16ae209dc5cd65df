#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/extension.hpp"
#include "tests/conformance/scene.hpp"

namespace tandemtrim::test {

using conformance::Scene;

/// Events in order, one text each.
using Log = std::vector<std::string>;

/// A bundle with a scene's resources and texts that logs each request.
class FakeBundle : public platform::Bundle {
 public:
  explicit FakeBundle(const Scene& scene);
  ~FakeBundle() override;
  FakeBundle(const FakeBundle&) = delete;
  FakeBundle& operator=(const FakeBundle&) = delete;

  [[nodiscard]] std::optional<std::string> pathForResource(std::string_view name,
                                                           std::string_view type) const override;
  [[nodiscard]] std::string localizedStringForKey(std::string_view key, std::string_view value,
                                                  std::optional<std::string_view> table) const override;

  /// The setting-info file; nullopt for a bundle without one.
  std::optional<std::string> settingInfoPath;
  std::map<std::string, std::string, std::less<>> strings;
  mutable Log log;
  std::function<void()> onRelease;
};

/// Print settings that log each read and write, and fail on request.
class FakePrintSettings : public platform::PrintSettings {
 public:
  platform::OSStatus PMPrintSettingsGetValue(std::string_view key,
                                             std::optional<std::string>& value) const override;
  platform::OSStatus PMPrintSettingsSetValue(std::string_view key, const std::optional<std::string>& value,
                                             bool locked) override;

  std::map<std::string, std::string, std::less<>> values;
  platform::OSStatus readStatus = platform::kNoError;
  platform::OSStatus writeStatus = platform::kNoError;
  /// "get key", "set key=value" or "remove key", the last two with " locked" appended if requested.
  mutable Log log;
};

/// The host of a scene: the job's print settings, and the printer's PPD as libcups opens it.
class FakeCallback : public platform::HostCallback {
 public:
  explicit FakeCallback(const Scene& scene);
  ~FakeCallback() override;
  FakeCallback(const FakeCallback&) = delete;
  FakeCallback& operator=(const FakeCallback&) = delete;

  [[nodiscard]] platform::PrintSettings* printSettings() override { return current; }
  [[nodiscard]] ppd_file_s* ppdFile() override { return ppd.get(); }

  FakePrintSettings settings;
  /// Returned by `printSettings`; may be null.
  platform::PrintSettings* current = &settings;
  std::shared_ptr<ppd_file_s> ppd;
  std::function<void()> onRelease;
};

}  // namespace tandemtrim::test
