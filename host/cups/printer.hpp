#pragma once

#include <optional>
#include <span>
#include <string>

#include "host/cups/connection/connection.hpp"
#include "host/job/lpoptions.hpp"
#include "host/job/options.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A queue of the print server, with the options that the user saved for it.
struct Printer {
  std::string name;
  /// The user's instance of the queue, such as "draft" in "Morva/draft".
  std::optional<std::string> instance = {};
  /// The options that the user (or the administrator, for all users) saved, without the server's own.
  Options saved;
  /// The options that the administrator saved for all users, with those that `saved` overrides or leaves out.
  Options savedForAllUsers;
  /// The server's defaults that are plain texts, such as those that the administrator set for options that
  /// CUPS does not know.
  Options queueDefaults;
  /// Every default that the server reports for the printer and uses for a job without the option.
  Options serverDefaults;
  bool accepting = true;
  bool stopped = false;
  /// The server's message about the printer's state; often empty.
  std::string stateMessage;
};

/// "Morva", or "Morva/draft" for an instance.
std::string nameWithInstance(const Printer& printer);

/// Failure when the file of the user's defaults is a pipe, on which libcups would block, or a device, which
/// it would read endlessly.
void refuseOddDefaults();

/// The default printer as libcups finds it: from the environment, or from the texts of the administrator's
/// and the user's files of defaults. nullopt means the server's default printer.
std::optional<DestinationName> localDefault(std::span<const std::string> defaults);

/// Finds the named printer ("name" or "name/instance"), or the default printer as lp does. Failure, which
/// lists the existing printers, when there is none.
Printer findPrinter(const Connection& connection, const std::optional<std::string>& name);

/// Failure when the queue accepts no jobs. Reports a stopped printer, where the job will wait.
void checkState(const Printer& printer, const Report& report);

/// "Morva is stopped (Paused)".
Fact stoppedFact(const Printer& printer);

}  // namespace tandemtrim::host
