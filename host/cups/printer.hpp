#pragma once

#include <optional>
#include <string>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A queue of the print server, with what its user keeps for it.
struct Printer {
  std::string name;
  /// libcups's own record of it, with the user's instance of it.
  DestinationHandle destination;
  /// The options that the user (or the administrator, for all users) saved; not what the server itself says
  /// of the printer.
  Options saved;
  /// The texts that the administrator made the queue's defaults for options that CUPS does not know. The
  /// server supplies them to a job without these options.
  Options queueDefaults;
  /// All that the server itself gives a job without these options, as it says of the printer.
  Options serverDefaults;
  bool accepting = true;
  bool stopped = false;
  /// The server's words on the printer's state; often empty.
  std::string stateMessage;
};

/// Failure when the user's defaults are a pipe, which libcups would wait for, or a device, which it would
/// read without end.
void refuseOddDefaults();

/// The named printer ("name" or "name/instance"), or the default one as lp finds it. Failure, with the names
/// of those that exist, when there is none.
Printer findPrinter(const Connection& connection, const std::optional<std::string>& name);

/// Failure when the queue takes no jobs; a message when the job will wait in it.
void checkState(const Printer& printer, const Report& report);

/// "Morva is stopped (Paused)".
Fact stoppedFact(const Printer& printer);

}  // namespace tandemtrim::host
