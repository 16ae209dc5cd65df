#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/asking/background.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The details of a printer that the dialog uses.
struct PrinterDetails {
  std::string name;
  /// The name, which "/instance" may follow.
  std::string destination;
  /// Null for a printer without one. Its texts are in the user's language.
  PpdHandle ppd;
  /// The options that the user saved for the printer, spelled as in the PPD.
  Options saved;
  /// The options that the administrator saved for all users.
  Options savedForAllUsers;
  /// The queue's defaults that are plain texts, such as those for options that CUPS does not know.
  Options queueDefaults;
  /// Every default that the server uses for a job without the option.
  Options serverDefaults;
};

/// The destination of jobs for the printer: the one that the dialog started with (`first`, which may be an
/// instance) if it belongs to this printer, else the printer itself.
std::string destinationOn(const std::string& printer, const std::string& first);

/// Reads details of printers in the background, one printer at a time.
class DetailsReader {
 public:
  using Done = std::function<void(Outcome<std::shared_ptr<PrinterDetails>>)>;

  /// No server means libcups's default one. `ask` answers a server that requires a login.
  DetailsReader(std::optional<std::string> server, AskForLogin ask)
      : server_(std::move(server)), ask_(std::move(ask)) {}

  /// Drops a reading that is under way. Reads the details of the printer ("name" or "name/instance"), or of
  /// the default one, and calls `done`.
  void read(const std::optional<std::string>& printer, Done done);
  /// Drops the reading that is under way.
  void drop() { reading_.reset(); }

 private:
  std::optional<std::string> server_;
  AskForLogin ask_;
  // A new object for each reading.
  std::shared_ptr<void> reading_;
};

}  // namespace tandemtrim::host
