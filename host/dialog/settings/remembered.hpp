#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/dialog/settings/dialog_options.hpp"
#include "host/failure.hpp"
#include "host/job/options.hpp"
#include "host/note.hpp"

namespace tandemtrim::host {

/// A printer of a server; none is the server that libcups would choose.
struct PrinterPlace {
  std::optional<std::string> server;
  std::string printer;
};

/// What a person's last successful job on a printer was set to: on the dialog's own pages and at the panel.
struct Remembered {
  /// Either part is null when nothing is remembered of it.
  Pages pages;
  Options panel;
};

/// What is remembered for the printer. A file that cannot be understood is set aside, under its name with
/// ".damaged" behind it, and noted; nothing is remembered then.
Remembered recall(const PrinterPlace& place, const Note& note);

/// Remembers these settings for the printer, in place of earlier ones, but for the choice of pages, which is
/// each document's own. The file is whole at any moment, and nobody else can read it. Not being able to is
/// noted and given back.
std::optional<Failure> remember(const PrinterPlace& place, const Remembered& settings, const Note& note);

/// The file of the printer's settings, in the folder of this program below $XDG_STATE_HOME. Names of printers
/// are those of this computer's own server, or have their server's behind them.
std::filesystem::path rememberedFile(const PrinterPlace& place);

}  // namespace tandemtrim::host
