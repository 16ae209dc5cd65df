#include "fuzz/support/panel.hpp"

#include <algorithm>
#include <cstdlib>

#include "adapters/linux/files/property_list.hpp"
#include "platform/log.hpp"
#include "platform/property_list.hpp"
#include "plugin/plugin.hpp"

namespace tandemtrim {
namespace fuzz {

std::string& settingInfoOfInput() {
  static std::string bytes;
  return bytes;
}

std::optional<std::string> Job::stored(std::string_view key) const {
  std::optional<std::string> value;
  settings.PMPrintSettingsGetValue(key, value);
  return value;
}

std::unique_ptr<platform::PrintPanel> openPanel(std::shared_ptr<Job> job, std::shared_ptr<Resources> bundle) {
  MorvaTTPdePluginKV2 plugin;
  plugin.initWithBundle(std::move(bundle));
  auto panels = plugin.PDEPanelsForType(platform::kPrintDialogExtensionType, std::move(job));
  return panels ? std::move(panels->front()) : nullptr;
}

platform::memory::PanelView& viewOf(platform::PrintPanel& panel) {
  return dynamic_cast<platform::memory::PanelView&>(*panel.panelView());
}

// strtoll() skips the same white space in the C locale, and clamps to 64 bits.
long long integerHeldBetween(const std::string& text, long long minimum, long long maximum) {
  return std::max(minimum, std::min(std::strtoll(text.c_str(), nullptr, 10), maximum));
}

}  // namespace fuzz

namespace platform {

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  std::string ignored;
  static const auto ofBundle = linux::readPropertyList(SETTING_INFO, ignored);
  return path == fuzz::kOfBundle ? ofBundle : linux::propertyListIn(fuzz::settingInfoOfInput(), ignored);
}

void NSLog(std::string_view /*format*/, std::span<const std::string> /*list*/) {}

}  // namespace platform
}  // namespace tandemtrim
