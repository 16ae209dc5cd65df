#pragma once

#include "host/connection.hpp"
#include "host/options.hpp"
#include "host/printer.hpp"

namespace tandemtrim::host {

/// Keeps the options as the user's defaults for the printer, where all programs find them. Failure when one
/// cannot be kept as it is.
void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options);

}  // namespace tandemtrim::host
