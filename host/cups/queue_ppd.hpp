#pragma once

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/cups/printer.hpp"

namespace tandemtrim::host {

/// The PPD of the printer's queue, or null when it has none. Failure when the server breaks off twice, or the
/// PPD is malformed or too large.
PpdHandle queuePpd(const Connection& connection, const Printer& printer);

}  // namespace tandemtrim::host
