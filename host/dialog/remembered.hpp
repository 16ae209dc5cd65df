#pragma once

#include <filesystem>
#include <string>

#include <glibmm/keyfile.h>

#include "host/note.hpp"
#include "host/options.hpp"

namespace tandemtrim::host {

/// What a person's last successful job on a printer was set to: the dialog's own settings and page setup, and
/// the panel's options.
struct Remembered {
  /// With GTK's groups "Print Settings" and "Page Setup"; empty when nothing is remembered.
  Glib::RefPtr<Glib::KeyFile> dialog;
  Options panel;
};

/// What is remembered for the printer. A file that cannot be understood is set aside, under its name with
/// ".damaged" behind it, and noted; nothing is remembered then.
Remembered recall(const std::string& printer, const Note& note);

/// Remembers these settings for the printer, in place of earlier ones; the file is whole at any moment. Not
/// being able to is noted.
void remember(const std::string& printer, const Remembered& settings, const Note& note);

/// The file of the printer's settings, in the folder of this program below $XDG_STATE_HOME.
std::filesystem::path rememberedFile(const std::string& printer);

}  // namespace tandemtrim::host
