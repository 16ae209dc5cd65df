#include "plugin/plugin.hpp"

#include "adapters/module/plugin.hpp"

namespace tandemtrim::platform {

std::unique_ptr<Plugin> makePlugin() { return std::make_unique<MorvaTTPdePluginKV2>(); }

}  // namespace tandemtrim::platform
