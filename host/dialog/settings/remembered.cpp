#include "host/dialog/settings/remembered.hpp"

#include <array>
#include <string_view>

#include <cups/cups.h>
#include <glib.h>
#include <glibmm/error.h>
#include <glibmm/keyfile.h>
#include <glibmm/uriutils.h>
#include <gtk/gtk.h>

#include "host/whole_file.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSettingsGroup = "Print Settings";
constexpr const char* kSetupGroup = "Page Setup";
constexpr const char* kPanelGroup = "Panel";
// The name of that group in files of version 0.1.0.
constexpr const char* kFormerPanelGroup = "Tandem Trim";
constexpr std::string_view kDefaultPort = ":631";
constexpr int kOwnFolder = 0700;
constexpr int kOwnFile = 0600;

void setAside(const fs::path& file, const std::string& reason, const Report& report) {
  auto aside = file;
  aside += ".damaged";
  std::error_code failed;
  fs::rename(file, aside, failed);
  report("the settings remembered in " + file.string() + " cannot be understood (" + reason +
         "); the file is now " + (failed ? file : aside).string());
}

// When a job is printed, and the file that it is saved to.
constexpr std::array<const char*, 5> kWhenAndWhere{"print-at", "print-at-time", "cups-job-hold-until",
                                                   GTK_PRINT_SETTINGS_OUTPUT_URI,
                                                   GTK_PRINT_SETTINGS_OUTPUT_FILE_FORMAT};

void removeThoseOfOneJob(Gtk::PrintSettings& settings) {
  for (const auto* key : kKeysOfTheDocument) settings.unset(key);
  for (const auto* key : kWhenAndWhere) settings.unset(key);
}

// Empty for the server of this computer.
std::string nameOf(const std::optional<std::string>& server) {
  std::string name = server.value_or(cupsServer());
  if (!server && !name.starts_with('/')) name += ':' + std::to_string(ippPort());
  if (name.ends_with(kDefaultPort)) name.erase(name.size() - kDefaultPort.size());
  return name.starts_with('/') || name == "localhost" ? "" : name;
}

// The name as a part of a file's name.
std::string escaped(const std::string& name) { return Glib::uri_escape_string(name, ":[]"); }

}  // namespace

fs::path rememberedFile(const PrinterPlace& place) {
  const auto server = nameOf(place.server);
  const auto file = escaped(place.printer) + (server.empty() ? "" : '@' + escaped(server)) + ".conf";
  return fs::path(g_get_user_state_dir()) / "tandem-trim" / file;
}

Remembered recall(const PrinterPlace& place, const Report& report) {
  const auto file = rememberedFile(place);
  try {
    const auto text = readWholeFile(file);
    if (!text) return {};
    Remembered settings;
    const auto groups = Glib::KeyFile::create();
    groups->load_from_data(*text);
    if (groups->has_group(kSettingsGroup)) {
      settings.tabs.settings = Gtk::PrintSettings::create_from_key_file(groups);
      // Earlier versions kept some of them.
      removeThoseOfOneJob(*settings.tabs.settings);
    }
    if (groups->has_group(kSetupGroup)) settings.tabs.setup = Gtk::PageSetup::create_from_key_file(groups);
    for (const auto* group : {kPanelGroup, kFormerPanelGroup}) {
      if (!groups->has_group(group)) continue;
      for (const auto& keyword : groups->get_keys(group))
        settings.panel.push_back({keyword, groups->get_string(group, keyword)});
      break;
    }
    return settings;
  } catch (const Glib::Error& damaged) {
    setAside(file, damaged.what(), report);
  } catch (const Failure& unreadable) {
    report(unreadable.fact().english());
  }
  return {};
}

std::optional<Failure> remember(const PrinterPlace& place, const Remembered& settings, const Report& report) {
  const auto file = rememberedFile(place);
  const auto groups = Glib::KeyFile::create();
  auto tabs = settings.tabs.settings->copy();
  removeThoseOfOneJob(*tabs);
  tabs->save_to_key_file(groups);
  settings.tabs.setup->save_to_key_file(groups);
  for (const auto& [keyword, value] : settings.panel) groups->set_string(kPanelGroup, keyword, value);
  const auto text = groups->to_data().raw();

  g_mkdir_with_parents(file.parent_path().c_str(), kOwnFolder);
  GError* failure = nullptr;
  if (g_file_set_contents_full(file.c_str(), text.data(), static_cast<gssize>(text.size()),
                               G_FILE_SET_CONTENTS_CONSISTENT, kOwnFile, &failure) == FALSE) {
    const Failure forgotten(
        Trouble::notRemembered,
        Fact("the settings of this job cannot be remembered: [words]"_fact, {{"[words]", failure->message}}));
    g_error_free(failure);
    report(forgotten.fact().english());
    return forgotten;
  }
  return std::nullopt;
}

}  // namespace tandemtrim::host
