#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "adapters/linux/bundle.hpp"
#include "adapters/linux/bundle_info.hpp"
#include "host/failure.hpp"
#include "host/report.hpp"
#include "platform/extension.hpp"

namespace tandemtrim::host {

/// Runs one call of the plug-in in `bundle`. Any exception but the host's own Failure becomes a PluginFailure
/// that names the operation, so that a plug-in cannot end its host.
template <class Call>
auto callPlugin(const std::string& bundle, const std::string& operation, Call&& call) {
  try {
    return std::forward<Call>(call)();
  } catch (const Failure&) {
    throw;  // The host's own.
  } catch (const std::exception& raised) {
    throw PluginFailure(Fact("the plug-in [bundle] failed in [operation]: [words]"_fact,
                             {{"[bundle]", bundle}, {"[operation]", operation}, {"[words]", raised.what()}}));
  } catch (...) {
    throw PluginFailure(Fact("the plug-in [bundle] failed in [operation] without giving a reason"_fact,
                             {{"[bundle]", bundle}, {"[operation]", operation}}));
  }
}

/// The failure of a plug-in that cannot be used.
PluginFailure unusable(const std::string& bundle, const Fact& reason);
/// The same for a plug-in that lacks a part; only the English message has the reason.
PluginFailure incomplete(const std::string& bundle, const std::string& reason);

/// The bundle of a plug-in: its resources, and its Info.plist, which names its modules.
struct PluginBundle {
  std::string path;
  std::shared_ptr<platform::linux::Bundle> resources;
  platform::linux::BundleInfo info;
};

/// Opens the bundle at `path`, and reports each string table that it cannot use. PluginFailure, with the
/// reason, when there is no usable bundle.
PluginBundle openBundle(const std::string& path, const Report& report);

/// A plug-in that was made and has accepted its bundle.
struct LoadedPlugin {
  /// The bundle's path, for messages.
  std::string bundle;
  std::shared_ptr<platform::linux::Bundle> resources;
  std::unique_ptr<platform::Plugin> plugin;
};

/// The endings of the names of a bundle's modules, one for each kind of view.
inline constexpr const char* kMemoryModule = "-memory";
inline constexpr const char* kGtkModule = "";

/// Loads the bundle's module of this ending and makes its plug-in. The module stays loaded until the program
/// ends, since its objects may exist until then. PluginFailure, with the reason, when any step fails.
LoadedPlugin loadPlugin(const PluginBundle& bundle, const char* moduleEnding);

/// The plug-in's panels for the print dialog, at least one. PluginFailure when there is none.
std::unique_ptr<platform::PanelList> openPanels(const LoadedPlugin& loaded,
                                                std::shared_ptr<platform::HostCallback> callback);

}  // namespace tandemtrim::host
