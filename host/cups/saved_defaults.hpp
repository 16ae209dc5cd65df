#pragma once

#include "host/cups/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Keeps the options as the user's defaults for the printer, where all programs find them. Failure when one
/// cannot be kept as it is.
void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options);

}  // namespace tandemtrim::host
