#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The names of the server's printers. Failure when the server does not list them.
std::vector<std::string> printerNames(const Connection& connection);

/// The remedy for a printer that is not found, with the names of the server's printers.
std::string existingPrinters(const Connection& connection);

/// The names of a printer's attributes to ask for, which include the server's values of the saved options.
std::vector<std::string> namesToAsk(const Options& saved);

/// Asks for the name, state and defaults of this printer (nullopt means the server's default one), and for
/// the server's values of the saved options. Null when there is no such printer.
MessageHandle askFacts(const Connection& connection, const std::optional<std::string>& printer,
                       const Options& saved);

/// The saved options without those that the server itself supplies, each spelled as the server spells it.
Options withoutServers(Options saved, const MessageHandle& facts);

/// The server's default for each option, as its facts report it; with `type`, only defaults of this type.
Options serverDefaults(const MessageHandle& facts, const std::optional<ipp_tag_t>& type = std::nullopt);

}  // namespace tandemtrim::host
