#include "plugin/plugin.hpp"

#include <utility>

#include "adapters/gtk/hosted_panel.hpp"
#include "adapters/module/plugin.hpp"

namespace tandemtrim::platform {
namespace {

class PluginOfHostedPanels : public MorvaTTPdePluginKV2 {
 public:
  [[nodiscard]] std::unique_ptr<PanelList> PDEPanelsForType(std::optional<std::string_view> type,
                                                            std::shared_ptr<HostCallback> hostInfo) override {
    auto panels = MorvaTTPdePluginKV2::PDEPanelsForType(type, std::move(hostInfo));
    if (!panels) return nullptr;
    for (auto& panel : *panels) panel = std::make_unique<gtk::HostedPanel>(std::move(panel));
    return panels;
  }
};

}  // namespace

std::unique_ptr<Plugin> makePlugin() { return std::make_unique<PluginOfHostedPanels>(); }

}  // namespace tandemtrim::platform
