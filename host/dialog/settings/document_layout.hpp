#pragma once

#include <map>
#include <string>

#include "host/dialog/settings/tab_settings.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Which choices of the tabs a document has already, since the program that made it has applied them.
enum class LaidOut {
  nothing,
  /// Pages, scale, paper and orientation: all that shapes a document for a printer.
  pages,
  /// Also copies, their order and pages per side, as in a file, which no printer copies.
  everything
};

/// The settings, by GTK's keys, by which a program lays its document out to this extent. Settings that the
/// job applies get the value that changes nothing, so that nothing happens twice.
std::map<std::string, std::string> settingsToLayOut(const TabSettings& tabs, LaidOut laidOut);

/// Failure, with a text for the user, when the tabs choose a part of the document or several pages per side,
/// which a file cannot have.
void refusePartInFile(const Gtk::PrintSettings& settings, LaidOut laidOut);

/// Removes from a job's options what its document has already.
void removeLaidOut(Options& options, LaidOut laidOut);

}  // namespace tandemtrim::host
