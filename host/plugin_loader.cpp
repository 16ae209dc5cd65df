#include "host/plugin_loader.hpp"

#include <dlfcn.h>

#include "platform/linux/bundle.hpp"
#include "platform/linux/bundle_info.hpp"

namespace tandemtrim::host {
namespace {

platform::MakePlugin findMaker(const std::string& bundle, const std::string& module,
                               const std::string& principalClass) {
  void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) throw unusable(bundle, dlerror());
  void* const symbol = dlsym(handle, principalClass.c_str());
  if (symbol == nullptr) throw unusable(bundle, "its module does not export " + principalClass);
  return reinterpret_cast<platform::MakePlugin>(symbol);
}

}  // namespace

PluginFailure unusable(const std::string& bundle, const std::string& reason) {
  return PluginFailure("the plug-in " + bundle + " cannot be used: " + reason);
}

LoadedPlugin loadPlugin(const std::string& path, const char* moduleEnding, const Note& note) {
  std::string reason;
  const auto bundle = platform::linux::Bundle::open(path, reason);
  if (!bundle) throw unusable(path, reason);
  for (const auto& fault : bundle->brokenTables()) note("the panel's texts stay untranslated: " + fault);
  const auto info = platform::linux::BundleInfo::read(bundle->path(), reason);
  if (!info) throw unusable(path, reason);
  const auto principalClass = info->principalClass();
  if (!principalClass) throw unusable(path, "its Info.plist names no NSPrincipalClass");
  const auto make = findMaker(path, info->modulePath(moduleEnding), *principalClass);

  LoadedPlugin loaded{path, nullptr};
  make(loaded.plugin);
  if (!loaded.plugin) throw unusable(path, *principalClass + " made no plug-in");
  if (!callPlugin(path, "initWithBundle", [&] { return loaded.plugin->initWithBundle(bundle); })) {
    throw unusable(path, "it refuses its own bundle");
  }
  return loaded;
}

std::unique_ptr<platform::PanelList> openPanels(const LoadedPlugin& loaded,
                                                std::shared_ptr<platform::HostCallback> callback) {
  auto panels = callPlugin(loaded.bundle, "PDEPanelsForType", [&] {
    return loaded.plugin->PDEPanelsForType(platform::kPrintDialogExtensionType, std::move(callback));
  });
  if (!panels || panels->empty() || !panels->front()) {
    throw unusable(loaded.bundle,
                   "it has no panel for the print dialog; its setting information may be missing or broken");
  }
  return panels;
}

}  // namespace tandemtrim::host
