#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The names of the server's printers. Failure when the server does not list them.
std::vector<std::string> printerNames(const Connection& connection);

/// The remedy for a printer that is not found, with the names of the server's printers.
std::string existingPrinters(const Connection& connection);

/// Asks for a printer's state and the attributes that libcups turns into options of its destination. Failure,
/// which lists the existing printers, when there is no such printer.
MessageHandle askFacts(const Connection& connection, const std::string& printer);

/// Returns the destination's options that the user (or the administrator, for all users) saved, and the
/// queue's defaults for options that CUPS does not know. Asks the server once more when its facts do not show
/// where an option comes from.
std::pair<Options, Options> keptOptions(const Connection& connection, const cups_dest_t& destination,
                                        const MessageHandle& facts);

/// The server's default for each option, as its facts report it.
Options serverDefaults(const MessageHandle& facts);

}  // namespace tandemtrim::host
