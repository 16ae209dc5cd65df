#include "host/applications/portal_rules.hpp"

#include <algorithm>
#include <map>
#include <regex>

#include "host/failure.hpp"
#include "host/home_folder.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using Entries = std::vector<SettingsEntry>;

constexpr const char* kFolder = "xdg-desktop-portal";
constexpr const char* kBackendGroup = "portal";
// The backend that portals with settings use where neither the settings nor the backends' files name one.
constexpr const char* kLastResort = "gtk";

struct Backend {
  std::string name;
  /// The desktops that its file names.
  std::vector<std::string> useIn;
};

std::optional<std::string> setValue(const Variables& variable, const char* name) {
  auto value = variable(name);
  return value && !value->empty() ? value : std::nullopt;
}

std::vector<fs::path> foldersOf(const Variables& variable, const char* name, const std::string& fallback) {
  const auto parts = partsOf(setValue(variable, name).value_or(fallback), ':');
  return {parts.begin(), parts.end()};
}

std::string lowerCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return text;
}

bool isFile(const fs::path& path) {
  std::error_code unreadable;
  return fs::is_regular_file(path, unreadable);
}

// The settings file that applies in one folder: that of the desktop, else the one for all desktops.
std::optional<fs::path> settingsIn(const fs::path& folder, const PortalPlaces& places) {
  for (const auto& desktop : places.desktops) {
    if (auto file = folder / (lowerCase(desktop) + "-portals.conf"); isFile(file)) return file;
  }
  if (auto file = folder / "portals.conf"; isFile(file)) return file;
  return std::nullopt;
}

// The backends for printing, sorted by name.
std::vector<Backend> printBackends(const PortalPlaces& places, PortalVersion version) {
  std::map<std::string, Backend> found;
  for (const auto& folder : backendFolders(places, version)) {
    std::error_code unreadable;
    for (const auto& file : fs::directory_iterator(folder, unreadable)) {
      if (file.path().extension() != ".portal") continue;
      const auto entries = entriesOf(file.path()).value_or(Entries{});
      const auto parts = partsOf(valueOf(entries, kBackendGroup, "Interfaces").value_or(""));
      if (std::ranges::count(parts, kPrintPart) == 0) continue;
      const auto name = file.path().stem().string();
      found.try_emplace(name, Backend{name, desktopsOf(file.path())});
    }
  }
  std::vector<Backend> backends;
  backends.reserve(found.size());
  for (auto& [name, backend] : found) backends.push_back(std::move(backend));
  return backends;
}

ChosenBackend byDesktop(const PortalPlaces& places, const std::vector<Backend>& backends) {
  for (const auto& desktop : places.desktops) {
    for (const auto& backend : backends) {
      const bool isForIt = std::ranges::any_of(
          backend.useIn, [&](const auto& name) { return lowerCase(name) == lowerCase(desktop); });
      if (isForIt) return {backend.name, "which is made for the desktop " + desktop, {}};
    }
  }
  return {};
}

ChosenBackend bySettings(const fs::path& file, const std::vector<Backend>& backends) {
  const auto entries = entriesOf(file).value_or(Entries{});
  auto value = valueOf(entries, kPreferred, kPrintPart);
  if (!value) value = valueOf(entries, kPreferred, "default");
  for (const auto& name : partsOf(value.value_or(""))) {
    if (name == "none") break;
    for (const auto& backend : backends) {
      if (name == "*" || name == backend.name) return {backend.name, "named by " + file.string(), file};
    }
  }
  return {std::nullopt, file.string() + " names no backend that is installed", file};
}

}  // namespace

std::optional<PortalVersion> versionIn(const std::string& words) {
  static const std::regex kVersion(R"(\b(\d{1,4})\.(\d{1,4})\b)");
  std::smatch match;
  if (!std::regex_search(words, match, kVersion)) return std::nullopt;
  return PortalVersion{std::stoi(match[1]), std::stoi(match[2])};
}

PortalPlaces portalPlaces(const Variables& variable) {
  const fs::path home = setValue(variable, "HOME").value_or(homeFolder().string());
  PortalPlaces places;
  places.desktops = partsOf(variable("XDG_CURRENT_DESKTOP").value_or(""), ':');
  if (const auto only = setValue(variable, "XDG_DESKTOP_PORTAL_DIR")) places.only = *only;
  places.configHome = setValue(variable, "XDG_CONFIG_HOME").value_or((home / ".config").string());
  places.dataHome = setValue(variable, "XDG_DATA_HOME").value_or((home / ".local/share").string());
  places.configFolders = foldersOf(variable, "XDG_CONFIG_DIRS", "/etc/xdg");
  places.configFolders.emplace_back("/etc");
  places.dataFolders = foldersOf(variable, "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  return places;
}

fs::path userSettings(const PortalPlaces& places) {
  const auto folder = places.configHome / kFolder;
  return settingsIn(folder, places).value_or(folder / "portals.conf");
}

std::optional<fs::path> systemSettings(const PortalPlaces& places) {
  auto folders = places.configFolders;
  folders.push_back(places.dataHome);
  folders.insert(folders.end(), places.dataFolders.begin(), places.dataFolders.end());
  folders.emplace_back("/usr/share");
  for (const auto& folder : folders) {
    if (auto file = settingsIn(folder / kFolder, places)) return file;
  }
  return std::nullopt;
}

std::vector<fs::path> backendFolders(const PortalPlaces& places, PortalVersion version) {
  if (places.only) return {*places.only};
  std::vector<fs::path> folders;
  if (version >= kFirstWithManyFolders) {
    folders = places.dataFolders;
    folders.insert(folders.begin(), places.dataHome);
  }
  folders.emplace_back("/usr/share");
  for (auto& folder : folders) folder = folder / kFolder / "portals";
  return folders;
}

std::optional<std::vector<SettingsEntry>> entriesOf(const fs::path& file) {
  try {
    if (const auto text = readWholeFile(file, kMostSettingsBytes)) return readEntries(*text, file.string());
  } catch (const Failure&) {
    // The portal does not understand it, either.
  }
  return std::nullopt;
}

std::vector<std::string> desktopsOf(const fs::path& backendFile) {
  return partsOf(valueOf(entriesOf(backendFile).value_or(Entries{}), kBackendGroup, "UseIn").value_or(""));
}

std::optional<fs::path> backendFile(const PortalPlaces& places, PortalVersion version,
                                    const std::string& name) {
  for (const auto& folder : backendFolders(places, version)) {
    if (auto file = folder / (name + ".portal"); isFile(file)) return file;
  }
  return std::nullopt;
}

ChosenBackend chosenBackend(const PortalPlaces& places, PortalVersion version) {
  const auto backends = printBackends(places, version);
  const bool hasSettings = version >= kFirstWithSettings;
  if (hasSettings) {
    std::optional<fs::path> settings;
    if (places.only)
      settings = settingsIn(*places.only, places);
    else if (const auto user = userSettings(places); isFile(user))
      settings = user;
    else
      settings = systemSettings(places);
    if (settings) return bySettings(*settings, backends);
  }
  if (auto chosen = byDesktop(places, backends); chosen.name) return chosen;
  for (const auto& backend : backends) {
    if (!hasSettings || backend.name == kLastResort)
      return {backend.name, "because no settings name another", {}};
  }
  return {std::nullopt, "no settings name one", {}};
}

}  // namespace tandemtrim::host
