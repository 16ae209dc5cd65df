#pragma once

#include <compare>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/applications/key_file.hpp"

namespace tandemtrim::host {

/// The name of this program's print backend in the desktop portal's settings.
inline constexpr const char* kOwnBackend = "tandemtrim";
/// The part of the desktop portal by which applications print, as its backends name it.
inline constexpr const char* kPrintPart = "org.freedesktop.impl.portal.Print";
/// In bytes; larger than any real settings file.
inline constexpr std::size_t kMostSettingsBytes = 1 << 16;
/// The group of the portal's settings that names the backend for each part.
inline constexpr const char* kPreferred = "preferred";

struct PortalVersion {
  int major = 0;
  int minor = 0;

  // NOLINTNEXTLINE(modernize-use-nullptr): the check flags the 0 in the generated comparison.
  friend auto operator<=>(const PortalVersion&, const PortalVersion&) = default;
};

/// Older portals have no settings files.
inline constexpr PortalVersion kFirstWithSettings{1, 17};
/// Older portals look for backends in one folder.
inline constexpr PortalVersion kFirstWithManyFolders{1, 20};

/// The version in the output of a program's --version; nullopt if it has no version.
std::optional<PortalVersion> versionIn(const std::string& words);

/// Returns an environment variable's value; nullopt if it is not set.
using Variables = std::function<std::optional<std::string>(const std::string& name)>;

/// The desktops that the portal serves and the folders where it looks, according to its environment
/// variables.
struct PortalPlaces {
  /// The names of the user's desktop, the most specific one first.
  std::vector<std::string> desktops;
  /// The only folder of backends and settings, for trials of the portal; usually nullopt.
  std::optional<std::filesystem::path> only;
  std::filesystem::path configHome;
  std::filesystem::path dataHome;
  /// The system's folders, in their order.
  std::vector<std::filesystem::path> configFolders;
  std::vector<std::filesystem::path> dataFolders;
};

/// Empty variables count as not set.
PortalPlaces portalPlaces(const Variables& variable);

/// The user's settings file that the portal reads, or would read if it were there.
std::filesystem::path userSettings(const PortalPlaces& places);

/// The first settings file after userSettings(), which applies while that one is missing.
std::optional<std::filesystem::path> systemSettings(const PortalPlaces& places);

/// The file that describes a backend to the portal; nullopt if this version finds no backend of that name.
std::optional<std::filesystem::path> backendFile(const PortalPlaces& places, PortalVersion version,
                                                 const std::string& name);

/// The desktops that a backend's file names.
std::vector<std::string> desktopsOf(const std::filesystem::path& backendFile);

/// The folders where this version of the portal looks for backends.
std::vector<std::filesystem::path> backendFolders(const PortalPlaces& places, PortalVersion version);

/// The entries of a settings file in their order; nullopt if it is missing or cannot be understood.
std::optional<std::vector<SettingsEntry>> entriesOf(const std::filesystem::path& file);

/// The backend that the portal uses for printing.
struct ChosenBackend {
  /// nullopt if the portal uses no backend.
  std::optional<std::string> name;
  /// The reason, as a clause that can follow the name.
  std::string reason;
  /// The settings file that decides, if one does.
  std::optional<std::filesystem::path> settings;
};

/// The backend that a portal of this version uses if it starts now. Backends that cannot be understood are
/// ignored, as by the portal. Where the first settings file names no usable backend, or cannot be understood,
/// the result has no name, although newer portals then look further.
ChosenBackend chosenBackend(const PortalPlaces& places, PortalVersion version);

}  // namespace tandemtrim::host
