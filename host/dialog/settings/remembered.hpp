#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/dialog/settings/tab_settings.hpp"
#include "host/failure.hpp"
#include "host/job/options.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A printer of a server, or the user's instance of it ("name/instance"); no server means libcups's default
/// one.
struct PrinterPlace {
  std::optional<std::string> server;
  std::string printer;
};

/// The settings of the user's last successful job on a printer: those of GTK's tabs and those of the panel.
struct Remembered {
  /// Null where nothing is remembered; never null in what is to be remembered.
  TabSettings tabs;
  Options panel;
};

/// What is remembered for the printer. A damaged file is reported and renamed, with ".damaged" appended;
/// nothing is remembered then.
Remembered recall(const PrinterPlace& place, const Report& report);

/// Stores these settings for the printer, replacing earlier ones, except those that concern a single
/// document: its copies, its pages, and when it is printed. The file is replaced as a whole, and only the
/// user can read it. A failure is reported and returned.
std::optional<Failure> remember(const PrinterPlace& place, const Remembered& settings, const Report& report);

/// The file of the printer's settings, in the folder of this program below $XDG_STATE_HOME. It has the
/// printer's name, followed by the server's unless that is this computer's own.
std::filesystem::path rememberedFile(const PrinterPlace& place);

}  // namespace tandemtrim::host
