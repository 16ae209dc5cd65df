#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/dialog/settings/tab_settings.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The choices of the tabs that a program has already applied to the document that it made.
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

/// Failure, with a text for the user, when the tabs choose a part of the document or several pages per side
/// and no program has applied that choice: a saved file contains the whole document unchanged.
void refusePartInFile(const Gtk::PrintSettings& settings, LaidOut laidOut);

/// Replaces the job's options that a program has already applied to the document: by the value that changes
/// nothing or, where there is no such value, by no option.
void removeLaidOut(Options& options, LaidOut laidOut);

/// The keywords of those options.
[[nodiscard]] std::vector<std::string> keywordsLaidOut(LaidOut laidOut);

}  // namespace tandemtrim::host
