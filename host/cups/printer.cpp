#include "host/cups/printer.hpp"

#include <filesystem>
#include <tuple>

#include "host/cups/connection/attributes.hpp"
#include "host/cups/printer_facts.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

struct Name {
  std::string printer;
  std::optional<std::string> instance;
};

// Splits at the last slash, as lp does.
Name splitName(const std::string& text) {
  const auto slash = text.rfind('/');
  if (slash == std::string::npos) return {text, std::nullopt};
  return {text.substr(0, slash), text.substr(slash + 1)};
}

DestinationHandle defaultDestination(const Connection& connection) {
  auto destination = connection.destination(nullptr, nullptr);
  if (!destination) {
    if (connection.isSilent() || cupsLastError() != IPP_STATUS_ERROR_NOT_FOUND)
      throw connection.lastFailure();
    throw Failure(
        Trouble::noDefaultPrinter,
        Fact("there is no default printer, or the one that LPDEST, PRINTER or lpoptions name does not exist",
             "there is no default printer, or it does not exist"_fact, {}),
        "; " + existingPrinters(connection));
  }
  return destination;
}

Fact withState(FactText text, const Printer& printer) {
  return withWords(Fact(text, {{"[printer]", printer.name}}), printer.stateMessage);
}

}  // namespace

void refuseOddDefaults() {
  const auto file = savedDefaultsFile();
  std::error_code unreadable;
  if (std::filesystem::is_other(file, unreadable)) {
    throw Failure(
        Trouble::other,
        Fact("your defaults cannot be read, since [file] is not a file"_fact, {{"[file]", file.string()}}),
        "; nothing was sent. Move it away");
  }
}

Printer findPrinter(const Connection& connection, const std::optional<std::string>& name) {
  refuseOddDefaults();
  Printer printer;
  MessageHandle facts;
  if (name) {
    // Asked first, because libcups searches the whole network for a printer that the server does not have.
    const auto [printerName, instance] = splitName(*name);
    facts = askFacts(connection, printerName);
    printer.destination = connection.destination(printerName.c_str(), instance ? instance->c_str() : nullptr);
    if (!printer.destination) throw connection.lastFailure();
  } else {
    printer.destination = defaultDestination(connection);
    facts = askFacts(connection, printer.destination->name);
  }
  printer.name = printer.destination->name;
  refuseUnreadDefaults(printer);
  std::tie(printer.saved, printer.queueDefaults) = keptOptions(connection, *printer.destination, facts);
  printer.serverDefaults = serverDefaults(facts);
  printer.accepting = booleanIn(facts, "printer-is-accepting-jobs").value_or(true);
  printer.stopped = enumIn(facts, "printer-state") == IPP_PSTATE_STOPPED;
  printer.stateMessage = textIn(facts, "printer-state-message").value_or("");
  return printer;
}

Fact stoppedFact(const Printer& printer) { return withState("[printer] is stopped"_fact, printer); }

void checkState(const Printer& printer, const Report& report) {
  if (!printer.accepting) {
    throw Failure(Trouble::rejecting, withState("[printer] does not accept jobs"_fact, printer),
                  "; nothing was sent. Let it accept them again by cupsaccept " + printer.name +
                      ", or choose another printer by -d");
  }
  if (printer.stopped) {
    report(stoppedFact(printer).english() + "; the job waits until the printer is started by cupsenable " +
           printer.name);
  }
}

}  // namespace tandemtrim::host
