#pragma once

#include <map>
#include <string>

#include "host/dialog/settings/tab_settings.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// What a document shows already of the choices in the tabs, since the program that made it has applied them.
enum class LaidOut {
  nothing,
  /// Pages, scale, paper and orientation: all that shapes a document for a printer.
  pages,
  /// Copies, their order and pages per side, too, as in a file, which no printer makes copies of.
  everything
};

/// The settings by which a program lays its document out so far, by GTK's keys. What the job does is set to
/// its neutral value, so that nothing happens twice.
std::map<std::string, std::string> settingsToLayOut(const TabSettings& tabs, LaidOut laidOut);

/// Failure, with a text for the user, when the tabs ask for less of the document than a file of it holds.
void refusePartInFile(const Gtk::PrintSettings& settings, LaidOut laidOut);

/// Removes from a job's options what its document shows already.
void removeLaidOut(Options& options, LaidOut laidOut);

}  // namespace tandemtrim::host
