#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/job/options.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {

/// The file where CUPS keeps the user's options for each printer.
std::filesystem::path savedDefaultsFile();

/// Replaces the text of the file, which need not exist, by what `edit` makes of it. Nobody else who calls
/// this changes the file meanwhile, and readers see the old text or the new one. The file keeps its mode and
/// its owner. Failure when it cannot be read or written, or others keep it locked for the longest time.
void editFile(const std::filesystem::path& file, const std::function<std::string(const std::string&)>& edit,
              std::chrono::milliseconds longest = kLongestLock);

/// Those of a job's options that saveAsDefault() keeps: all but those of one job. Failure when CUPS cannot
/// keep one as it is.
Options keepable(const Options& options);

/// Keeps the options as the user's defaults for the printer, where all programs find them. Failure when one
/// cannot be kept as it is.
void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options);

/// Failure when the user's defaults cannot be read, or libcups has not read those for the printer: it goes on
/// without a file that it cannot read.
void refuseUnreadDefaults(const Printer& printer);

/// Takes away the user's defaults for the printer and gives them.
Options resetDefaults(const Printer& printer);

}  // namespace tandemtrim::host
