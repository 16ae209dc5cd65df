#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The names of the server's printers. Failure when it does not give them.
std::vector<std::string> printerNames(const Connection& connection);

/// What to do when a printer is not found, with the names of those that the server knows.
std::string existingPrinters(const Connection& connection);

/// The attributes of a printer that tell its state, and those that libcups makes options of its destination
/// from. Failure, with the names of those that exist, when there is no such printer.
MessageHandle askFacts(const Connection& connection, const std::string& printer);

/// Those of the destination's options that the user (or the administrator, for all users) saved, and the
/// texts that the administrator made the queue's defaults for options that CUPS does not know; not what else
/// the server says of the printer. The server is asked once more about what its facts leave open.
std::pair<Options, Options> keptOptions(const Connection& connection, const cups_dest_t& destination,
                                        const MessageHandle& facts);

/// What the facts name as the server's own value of each option for a job without it.
Options serverDefaults(const MessageHandle& facts);

}  // namespace tandemtrim::host
