#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/job/options.hpp"
#include "host/whole_file.hpp"

namespace tandemtrim::host {

/// The file where CUPS keeps the user's options for each printer.
std::filesystem::path savedDefaultsFile();

/// The texts of the files where CUPS keeps options for each printer: the administrator's for all users, then
/// the user's. The text of a file that does not exist is empty. Failure when one cannot be read, which
/// libcups would ignore; an unreadable one in another user's home folder, as under sudo, is empty instead.
std::array<std::string, 2> savedDefaults();

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

/// Does the same and removes all others of the printer's saved options from the user's defaults, except those
/// that concern a single job and those of the keywords in `untouched`.
void replaceDefaults(const Connection& connection, const Printer& printer, const Options& options,
                     const std::vector<std::string>& untouched);

/// Removes the user's defaults for the printer and returns them. Failure when the file cannot be changed.
Options resetDefaults(const Printer& printer);

}  // namespace tandemtrim::host
