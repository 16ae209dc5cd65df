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

/// The settings of the last job that the user sent to a printer: those of GTK's tabs and those of the panel.
struct Remembered {
  /// Its parts are null if nothing is remembered; remember() requires both.
  TabSettings tabs;
  Options panel;
};

/// The settings remembered for the printer. A damaged file is reported and renamed, with ".damaged" appended;
/// one that cannot be read is reported and stays. Nothing is remembered then.
Remembered recall(const PrinterPlace& place, const Report& report);

/// Stores these settings for the printer in place of earlier ones. Leaves out those that concern a single
/// document: copies, pages, scale, the time of printing and the file to save to. The file is replaced as a
/// whole, and only the user can read it. A failure is reported and returned.
std::optional<Failure> remember(const PrinterPlace& place, const Remembered& settings, const Report& report);

/// The file of the printer's settings, in the folder of this program below $XDG_STATE_HOME. It has the
/// printer's name, followed by the server's unless that is this computer's own.
std::filesystem::path rememberedFile(const PrinterPlace& place);

}  // namespace tandemtrim::host
