#include "plugin/plugin.hpp"

#include <utility>

#include "plugin/panel.hpp"

namespace tandemtrim {

bool MorvaTTPdePluginKV2::initWithBundle(std::shared_ptr<platform::Bundle> bundle) {
  if (!bundle) return false;
  bundle_ = std::move(bundle);
  return true;
}

std::unique_ptr<platform::PanelList> MorvaTTPdePluginKV2::PDEPanelsForType(
    std::optional<std::string_view> type, std::shared_ptr<platform::HostCallback> hostInfo) {
  if (type != platform::kPrintDialogExtensionType) return nullptr;
  auto panel = MorvaTTPdePanelKV2::initWithCallback(std::move(hostInfo), bundle_);
  if (!panel) return nullptr;
  auto panels = std::make_unique<platform::PanelList>();
  panels->push_back(std::move(panel));
  return panels;
}

}  // namespace tandemtrim
