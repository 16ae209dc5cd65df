#include "host/applications/applications.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "host/applications/marked_lines.hpp"
#include "host/applications/portal_rules.hpp"
#include "host/applications/session.hpp"
#include "host/failure.hpp"
#include "host/plain_text.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr const char* kOwnService = "org.freedesktop.impl.portal.desktop.tandemtrim";
constexpr const char* kPortalPrinting = "org.freedesktop.portal.Print";
constexpr const char* kRestart =
    "restart it with systemctl --user restart xdg-desktop-portal, or log in again";
constexpr const char* kReadAtStart = "the desktop portal reads its settings only when it starts; ";
constexpr const char* kSettingsEnd = "portals.conf";
// GTK 3 and GTK 4 before 4.8 read the first, GTK 4.8 the second.
const Lines kGtkVariables{"GTK_USE_PORTAL=1", "GDK_DEBUG=portals${GDK_DEBUG:+:$GDK_DEBUG}"};

std::string textOf(PortalVersion version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor);
}

// An unknown version is taken for a new one.
PortalVersion versionOf(const Portal& portal) { return portal.version.value_or(kFirstWithManyFolders); }

fs::path gtkFile(const PortalPlaces& places) {
  return places.configHome / "environment.d/60-tandem-trim.conf";
}

// The target of a link, so that the link itself is not replaced.
fs::path linkedFile(const fs::path& path) {
  std::error_code failed;
  if (!fs::is_symlink(path, failed)) return path;
  auto target = fs::canonical(path, failed);
  if (!failed) return target;
  throw Failure(path.string() + " is a link to " + fs::read_symlink(path, failed).string() +
                ", which does not exist; remove the link or create that file");
}

struct MarkedFile {
  fs::path path;
  std::string text;
  MarkedText parts;
};

MarkedFile readMarkedFile(const fs::path& path) {
  MarkedFile file{linkedFile(path), {}, {}};
  std::error_code unreadable;
  if (const auto text = readWholeFile(file.path, kMostSettingsBytes)) {
    file.text = *text;
    file.parts = partMarkedLines(*text, file.path.string());
  } else {
    file.parts.before = fs::exists(file.path.parent_path(), unreadable) ? Before::noFile : Before::noFolder;
  }
  return file;
}

bool isOwn(const MarkedFile& file) {
  return file.parts.before == Before::noFile || file.parts.before == Before::noFolder;
}

// Adds the marked lines to the file; returns whether the file changes.
bool writeMarkedLines(const MarkedFile& file, const Lines& lines) {
  const auto text = withMarkedLines(file.parts.own, lines, file.parts.before);
  if (text == file.text) return false;
  std::error_code failed;
  fs::create_directories(file.path.parent_path(), failed);
  if (failed)
    throw Failure(file.path.parent_path().string() + " cannot be created: " + failed.message() +
                  "; create it, then run the command again");
  replaceFile(file.path, text);
  return true;
}

// Removes the marked lines; returns whether the file is removed with them.
bool removeMarkedLines(const MarkedFile& file) {
  if (!isOwn(file) || !file.parts.own.empty()) {
    replaceFile(file.path, file.parts.own);
    return false;
  }
  std::error_code failed;
  fs::remove(file.path, failed);
  if (failed) throw Failure(file.path.string() + " cannot be removed: " + failed.message());
  // Fails, as it should, when the folder has other files by now.
  if (file.parts.before == Before::noFolder) fs::remove(file.path.parent_path(), failed);
  return true;
}

// The entries of the desktop's own settings, all of which a user's file hides.
Lines carriedOver(const PortalPlaces& places) {
  Lines lines;
  const auto hidden = systemSettings(places);
  for (const auto& entry :
       hidden ? entriesOf(*hidden).value_or(std::vector<SettingsEntry>{}) : std::vector<SettingsEntry>{}) {
    if (entry.group == kPreferred) lines.push_back(entry.key + '=' + entry.value);
  }
  if (!lines.empty()) lines.insert(lines.begin(), "# From " + plainText(hidden->string()) + ':');
  return lines;
}

Lines settingsLines(const MarkedFile& file, const PortalPlaces& places) {
  auto lines = isOwn(file) ? carriedOver(places) : Lines{};
  // A repeated group continues, and the last of several entries counts.
  lines.insert(lines.begin(), '[' + std::string(kPreferred) + ']');
  lines.push_back(std::string(kPrintPart) + '=' + kOwnBackend);
  return lines;
}

// The remedy for a portal that has no settings files, but finds the backend.
std::string byDesktopText(const Portal& portal, const fs::path& backend) {
  const auto own = desktopsOf(backend);
  std::string desktops = own.empty() ? kOwnBackend : own.front();
  for (const auto& desktop : portal.places.desktops) desktops += ':' + desktop;
  return "; portals before " + textOf(kFirstWithSettings) +
         " have no portals.conf and choose a backend by the desktop's name: set XDG_CURRENT_DESKTOP=" +
         desktops + " for the whole session, before it starts";
}

std::string folderText(const Portal& portal) {
  const auto folders = backendFolders(portal.places, versionOf(portal));
  std::string text;
  for (const auto& folder : folders) text += (text.empty() ? "" : ", ") + folder.string();
  const auto elsewhere = backendFile(portal.places, kFirstWithManyFolders, kOwnBackend);
  return "the desktop portal finds no " + std::string(kOwnBackend) + ".portal in " + text +
         (elsewhere ? "; link it there: ln -s " + elsewhere->string() + ' ' + folders.back().string()
                    : "; install the package tandem-trim-gtk");
}

// The parts that the portal lacks, regardless of its settings.
Lines missingParts(const Portal& portal) {
  Lines missing;
  if (!portal.isInstalled)
    missing.emplace_back("the desktop portal is not installed; install the package xdg-desktop-portal");
  if (!backendFile(portal.places, versionOf(portal), kOwnBackend)) missing.push_back(folderText(portal));
  return missing;
}

std::string notChosenText(const Portal& portal, const ChosenBackend& chosen) {
  auto fact = "the desktop portal uses " +
              (chosen.name ? "the print backend " + *chosen.name + ", " : "no print backend: ") +
              chosen.reason;
  const auto backend = backendFile(portal.places, versionOf(portal), kOwnBackend);
  if (!backend) return fact;
  return versionOf(portal) >= kFirstWithSettings ? fact + "; run tandem-trim --applications on"
                                                 : fact + byDesktopText(portal, *backend);
}

bool isOutdated(const Portal& portal, const ChosenBackend& chosen) {
  if (!portal.process) return false;
  const auto backend = backendFile(portal.places, versionOf(portal), kOwnBackend);
  return (chosen.settings && isNewerThan(*chosen.settings, *portal.process)) ||
         (backend && isNewerThan(*backend, *portal.process));
}

// Why the session's services do not offer printing. Asking starts those that do not run.
Lines serviceProblems() {
  Lines problems;
  if (const auto said = interfaceProblem(kPortalService, kPortalPrinting))
    problems.push_back("the desktop portal does not offer printing to applications (" + shortText(*said) +
                       "); see journalctl --user -u xdg-desktop-portal");
  if (const auto said = interfaceProblem(kOwnService, kPrintPart))
    problems.push_back(
        "the print backend of tandem-trim does not answer (" + shortText(*said) +
        "); install the package tandem-trim-gtk, or see journalctl --user -u tandem-trim-portal");
  return problems;
}

void showPortal(const Portal& portal, const ChosenBackend& chosen, std::ostream& out) {
  const auto version = portal.version ? textOf(*portal.version) : "of unknown version";
  const auto* const state = portal.process ? ", running" : ", not running";
  out << "desktop portal: " << (portal.isInstalled ? version + state : "not installed") << '\n';
  out << "print backend: " << plainText(chosen.name.value_or("none")) << ", " << plainText(chosen.reason)
      << '\n';
}

void showGtk(const PortalPlaces& places, std::ostream& out) {
  const auto file = gtkFile(places);
  std::error_code unreadable;
  const bool isInSession = std::getenv("GTK_USE_PORTAL") != nullptr;
  out << "GTK applications that use the portal: "
      << (!fs::exists(file, unreadable)
              ? "only those that do so by default"
              : (isInSession ? "all, because of " : "all from the next login on, because of ") +
                    plainText(file.string()))
      << '\n';
}

// Every file that switching on may have written to.
std::vector<fs::path> ownFiles(const PortalPlaces& places) {
  std::vector<fs::path> files;
  std::error_code unreadable;
  for (const auto& entry : fs::directory_iterator(userSettings(places).parent_path(), unreadable)) {
    if (entry.path().string().ends_with(kSettingsEnd)) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  files.push_back(gtkFile(places));
  return files;
}

// Failure for a portal that reads its settings only from a folder for trials, which is not changed.
void refuseOtherFolder(const PortalPlaces& places) {
  if (!places.only) return;
  throw Failure(
      "XDG_DESKTOP_PORTAL_DIR is set for the desktop portal, which then reads only the settings in " +
      places.only->string() + "; unset the variable, or write " + kPrintPart + '=' + kOwnBackend +
      " to portals.conf there");
}

void writeSettings(const Portal& portal, std::ostream& out) {
  const auto file = readMarkedFile(userSettings(portal.places));
  const auto entries = readEntries(file.parts.own, file.path.string());
  const auto named = partsOf(valueOf(entries, kPreferred, kPrintPart).value_or(""));
  const bool isUsersOwn = !named.empty() && named.front() == kOwnBackend;
  const bool changes = !isUsersOwn && writeMarkedLines(file, settingsLines(file, portal.places));
  out << (changes ? "written: " : "unchanged: ") << plainText(file.path.string()) << '\n';
}

}  // namespace

void switchApplicationsOn(bool allGtk, std::ostream& out, const Report& report) {
  const auto portal = lookAtPortal();
  if (versionOf(portal) >= kFirstWithSettings) {
    refuseOtherFolder(portal.places);
    writeSettings(portal, out);
  } else if (const auto chosen = chosenBackend(portal.places, versionOf(portal));
             chosen.name != kOwnBackend) {
    for (const auto& missing : missingParts(portal)) report(missing);
    throw Failure(notChosenText(portal, chosen) + "; nothing was written");
  }
  if (allGtk) {
    const auto file = readMarkedFile(gtkFile(portal.places));
    const bool changes = writeMarkedLines(file, kGtkVariables);
    out << (changes ? "written: " : "unchanged: ") << plainText(file.path.string()) << '\n';
    report(
        "from the next login on, GTK applications also show their other dialogs through the desktop portal, "
        "for "
        "example those for files");
  }
  for (const auto& missing : missingParts(portal)) report(missing);
  const auto chosen = chosenBackend(portal.places, versionOf(portal));
  if (isOutdated(portal, chosen)) report(std::string(kReadAtStart) + kRestart);
}

void switchApplicationsOff(std::ostream& out, const Report& report) {
  const auto portal = lookAtPortal();
  bool changes = false;
  for (const auto& path : ownFiles(portal.places)) {
    const auto file = readMarkedFile(path);
    if (!file.parts.isMarked) continue;
    const bool isGone = removeMarkedLines(file);
    changes = true;
    out << (isGone ? "removed: " : "written: ") << plainText(file.path.string()) << '\n';
    if (path == gtkFile(portal.places))
      report("until the next login, GTK applications may still use the desktop portal");
  }
  if (!changes)
    return report("the settings of the desktop portal have no lines of tandem-trim; nothing was changed");
  if (portal.process) report(std::string(kReadAtStart) + kRestart);
}

void showApplications(std::ostream& out, const Report& report) {
  auto portal = lookAtPortal();
  Lines problems;
  if (portal.busProblem) {
    problems.push_back(*portal.busProblem);
  } else if (portal.isInstalled) {
    // This starts the portal, as an application does.
    problems = serviceProblems();
    portal = lookAtPortal();
  }
  const auto chosen = chosenBackend(portal.places, versionOf(portal));
  showPortal(portal, chosen, out);
  showGtk(portal.places, out);
  for (auto& missing : missingParts(portal)) problems.push_back(std::move(missing));
  if (chosen.name != kOwnBackend)
    problems.push_back(notChosenText(portal, chosen));
  else if (isOutdated(portal, chosen))
    problems.push_back(std::string("the desktop portal started before its settings changed; ") + kRestart);
  for (const auto& problem : problems) report(problem);
  if (!problems.empty()) throw Failure("applications do not print with this dialog yet");
  out << "applications print with this dialog\n";
}

}  // namespace tandemtrim::host
