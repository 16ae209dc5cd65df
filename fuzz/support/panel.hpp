#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/linux/print_settings.hpp"
#include "adapters/memory/panel_view.hpp"
#include "platform/extension.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim::fuzz {

/// A setting's default in the bundle's property list.
constexpr const char* defaultOf(std::size_t setting) {
  constexpr std::array<const char*, kFirstMargin> kBeforeMargins{"Off", "LongEdgeFeed", "Center"};
  return setting < kFirstMargin ? kBeforeMargins.at(setting) : "5";
}
/// The range of every margin, and the limit of a side if the PPD does not state it.
inline constexpr int kSmallest = 0;
inline constexpr int kLargest = 50;
inline constexpr int kLimit = 10;

/// Two paths: of the bundle's setting information, which is read once and then shared, and of a property list
/// with the bytes of settingInfoOfInput().
inline constexpr const char* kOfBundle = "bundle";
inline constexpr const char* kOfInput = "input";

/// The bytes of the property list at kOfInput.
std::string& settingInfoOfInput();

/// The bundle's resources from the source folder, or another property list. Each text is its key in
/// parentheses.
class Resources : public platform::Bundle {
 public:
  explicit Resources(std::string settingInfo = kOfBundle) : settingInfo_(std::move(settingInfo)) {}
  std::optional<std::string> pathForResource(std::string_view, std::string_view) const override {
    return settingInfo_;
  }
  std::string localizedStringForKey(std::string_view key, std::string_view,
                                    std::optional<std::string_view>) const override {
    return "(" + std::string(key) + ")";
  }

 private:
  std::string settingInfo_;
};

/// A host with one job, for a printer with this PPD; null if the printer has no PPD.
class Job : public platform::HostCallback {
 public:
  explicit Job(ppd_file_s* ppd = nullptr) : ppd_(ppd) {}
  platform::PrintSettings* printSettings() override { return &settings; }
  ppd_file_s* ppdFile() override { return ppd_; }
  std::optional<std::string> stored(std::string_view key) const;

  platform::linux::PrintSettings settings;

 private:
  ppd_file_s* ppd_;
};

/// The print dialog's panel, as its plug-in makes it.
std::unique_ptr<platform::PrintPanel> openPanel(std::shared_ptr<Job> job, std::shared_ptr<Resources> bundle);

/// A user's view of the panel.
platform::memory::PanelView& viewOf(platform::PrintPanel& panel);

/// The integer at the beginning of a text, clamped to two bounds: a second implementation, with the C
/// library.
long long integerHeldBetween(const std::string& text, long long minimum, long long maximum);

}  // namespace tandemtrim::fuzz
