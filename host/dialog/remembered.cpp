#include "host/dialog/remembered.hpp"

#include <glib.h>
#include <glibmm/error.h>
#include <glibmm/fileutils.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPanelGroup = "Tandem Trim";

void setAside(const fs::path& file, const std::string& reason, const Note& note) {
  auto aside = file;
  aside += ".damaged";
  std::error_code failed;
  fs::rename(file, aside, failed);
  note("the settings remembered in " + file.string() + " cannot be understood (" + reason +
       "); the file is now " + (failed ? file : aside).string());
}

}  // namespace

fs::path rememberedFile(const std::string& printer) {
  return fs::path(g_get_user_state_dir()) / "tandem-trim" / (printer + ".conf");
}

Remembered recall(const std::string& printer, const Note& note) {
  Remembered settings{Glib::KeyFile::create(), {}};
  const auto file = rememberedFile(printer);
  std::error_code unreadable;
  if (!fs::exists(file, unreadable)) return settings;
  try {
    settings.dialog->load_from_file(file.string());
    if (settings.dialog->has_group(kPanelGroup)) {
      for (const auto& keyword : settings.dialog->get_keys(kPanelGroup))
        settings.panel.push_back({keyword, settings.dialog->get_string(kPanelGroup, keyword)});
    }
    return settings;
  } catch (const Glib::Error& damaged) {
    setAside(file, damaged.what(), note);
    return {Glib::KeyFile::create(), {}};
  }
}

void remember(const std::string& printer, const Remembered& settings, const Note& note) {
  const auto file = rememberedFile(printer);
  for (const auto& [keyword, value] : settings.panel)
    settings.dialog->set_string(kPanelGroup, keyword, value);
  std::error_code failed;
  fs::create_directories(file.parent_path(), failed);
  try {
    Glib::file_set_contents(file.string(), settings.dialog->to_data());
  } catch (const Glib::Error& failure) {
    note("the settings of this job cannot be remembered: " + std::string(failure.what()));
  }
}

}  // namespace tandemtrim::host
