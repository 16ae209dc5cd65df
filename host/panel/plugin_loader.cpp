#include "host/panel/plugin_loader.hpp"

#include <dlfcn.h>

#include "host/panel/trust.hpp"

namespace tandemtrim::host {
namespace {

// Refuses a file that others could have changed, since its code would run with the user's rights.
void refuseIfOpenToStrangers(const std::string& bundle, const std::string& path) {
  if (const auto fault = openToStrangers(path))
    throw unusable(bundle, Fact(*fault, "others could have changed it"_fact, {}));
}

platform::MakePlugin findMaker(const std::string& bundle, const std::string& module,
                               const std::string& principalClass) {
  refuseIfOpenToStrangers(bundle, module);
  void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) throw unusable(bundle, Fact(dlerror()));
  void* const symbol = dlsym(handle, principalClass.c_str());
  if (symbol == nullptr) throw incomplete(bundle, "its module does not export " + principalClass);
  return reinterpret_cast<platform::MakePlugin>(symbol);
}

// The likely reason why a plug-in has no panel, which it does not report: property lists that cannot be read.
std::string suspectedReason(const platform::linux::Bundle& resources) {
  std::string reason;
  for (const auto& fault : resources.brokenPropertyLists())
    reason.append(reason.empty() ? "" : "; ").append(fault);
  return reason;
}

}  // namespace

PluginFailure unusable(const std::string& bundle, const Fact& reason) {
  return PluginFailure(Fact("the plug-in [bundle] cannot be used: [reason]"_fact,
                            {{"[bundle]", bundle}, {"[reason]", reason}}));
}

PluginFailure incomplete(const std::string& bundle, const std::string& reason) {
  return unusable(bundle, Fact(reason, "a part of it is missing or does not work"_fact, {}));
}

PluginBundle openBundle(const std::string& path, const Report& report) {
  refuseIfOpenToStrangers(path, path);
  std::string reason;
  auto resources = platform::linux::Bundle::open(path, reason);
  if (!resources) throw unusable(path, Fact(reason));
  auto info = platform::linux::BundleInfo::read(resources->path(), reason);
  if (!info) throw unusable(path, Fact(reason));
  for (const auto& fault : resources->brokenTables()) report("the panel's texts stay untranslated: " + fault);
  return {path, std::move(resources), *std::move(info)};
}

LoadedPlugin loadPlugin(const PluginBundle& bundle, const char* moduleEnding) {
  const auto principalClass = bundle.info.principalClass();
  if (!principalClass) throw incomplete(bundle.path, "its Info.plist names no NSPrincipalClass");
  const auto make = findMaker(bundle.path, bundle.info.modulePath(moduleEnding), *principalClass);

  LoadedPlugin loaded{bundle.path, bundle.resources, nullptr};
  make(loaded.plugin);
  if (!loaded.plugin) throw incomplete(bundle.path, *principalClass + " did not make a plug-in");
  if (!callPlugin(bundle.path, "initWithBundle",
                  [&] { return loaded.plugin->initWithBundle(loaded.resources); })) {
    throw incomplete(bundle.path, "it refuses its own bundle");
  }
  return loaded;
}

std::unique_ptr<platform::PanelList> openPanels(const LoadedPlugin& loaded,
                                                std::shared_ptr<platform::HostCallback> callback) {
  auto panels = callPlugin(loaded.bundle, "PDEPanelsForType", [&] {
    return loaded.plugin->PDEPanelsForType(platform::kPrintDialogExtensionType, std::move(callback));
  });
  if (!panels || panels->empty() || !panels->front()) {
    const auto suspected = suspectedReason(*loaded.resources);
    throw suspected.empty()
        ? incomplete(loaded.bundle,
                     "it has no panel for the print dialog; its setting information may be missing")
        : unusable(loaded.bundle,
                   Fact("it has no panel for the print dialog; " + suspected,
                        "it has no panel for the print dialog ([words])"_fact, {{"[words]", suspected}}));
  }
  return panels;
}

}  // namespace tandemtrim::host
