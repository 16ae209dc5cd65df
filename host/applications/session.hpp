#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/applications/portal_rules.hpp"

namespace tandemtrim::host {

/// The portal's name on the session bus.
inline constexpr const char* kPortalService = "org.freedesktop.portal.Desktop";

/// The desktop portal, as it is installed and as it runs in the user's session.
struct Portal {
  /// Why the session bus cannot be asked, and what to do about it; nullopt if it can.
  std::optional<std::string> busProblem;
  bool isInstalled = false;
  /// Of the program that the session bus starts; nullopt if that reports no version.
  std::optional<PortalVersion> version;
  /// The number of its process; nullopt while it does not run.
  std::optional<int> process;
  /// From the portal's environment while it runs, else from this program's.
  PortalPlaces places;
};

/// Looks at the portal without starting it.
Portal lookAtPortal();

/// Asks the service of this name on the session bus for its version of this interface. Returns the reason why
/// there is no answer, in the words of the service or the bus; nullopt if there is one. The bus starts a
/// service that does not run.
std::optional<std::string> interfaceProblem(const std::string& service, const std::string& interface);

/// Whether the file was written after the process started.
bool isNewerThan(const std::filesystem::path& file, int process);

}  // namespace tandemtrim::host
