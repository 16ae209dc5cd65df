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

/// Replaces the text of the file, which need not exist, by the result of `edit`. A lock keeps other callers
/// out, and readers see either the old text or the new one. The file keeps its mode and owner. Failure when
/// it cannot be read or written, or stays locked for `longest`.
void editFile(const std::filesystem::path& file, const std::function<std::string(const std::string&)>& edit,
              std::chrono::milliseconds longest = kLongestLock);

/// The options that saveAsDefault() can store: all but those that concern a single job. Failure when CUPS
/// cannot store one unchanged.
Options keepable(const Options& options);

/// Stores the options as the user's defaults for the printer, where all programs find them. Failure when one
/// cannot be stored unchanged.
void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options);

/// Failure when the user's defaults cannot be read, or libcups has not read those for the printer: it ignores
/// a file that it cannot read.
void refuseUnreadDefaults(const Printer& printer);

/// Removes the user's defaults for the printer and returns them.
Options resetDefaults(const Printer& printer);

}  // namespace tandemtrim::host
