#include "host/cups/printer.hpp"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "host/cups/connection/attributes.hpp"
#include "host/cups/printer_facts.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/failure.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using namespace std::string_view_literals;

// Splits the text at this slash, which separates the instance; npos for a text without one.
DestinationName splitAt(std::string::size_type slash, const std::string& text) {
  if (slash == std::string::npos) return {text, std::nullopt};
  return {text.substr(0, slash), text.substr(slash + 1)};
}

Failure notFound(const Connection& connection, const std::optional<std::string>& name) {
  const auto remedy = "; " + existingPrinters(connection);
  if (name)
    return Failure(Trouble::noPrinter,
                   Fact(R"(there is no printer "[printer]")"_fact,
                        {{"[printer]", shortText(splitAt(name->rfind('/'), *name).printer)}}),
                   remedy);
  return Failure(
      Trouble::noDefaultPrinter,
      Fact("there is no default printer, or the one that LPDEST, PRINTER or lpoptions names does not exist",
           "there is no default printer, or it does not exist"_fact, {}),
      remedy);
}

Failure namelessPrinter(const Connection& connection) {
  return Failure(
      Trouble::noServer,
      Fact(connection.server() + " did not name the printer", kUselessAnswer, {{"[server]", serverName()}}),
      "; see whether it is a print server");
}

Fact withState(FactText text, const Printer& printer) {
  return withWords(Fact(text, {{"[printer]", printer.name}}), printer.stateMessage);
}

}  // namespace

std::string nameWithInstance(const Printer& printer) {
  return printer.instance ? printer.name + '/' + *printer.instance : printer.name;
}

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

std::optional<DestinationName> localDefault(std::span<const std::string> defaults) {
  const char* name = std::getenv("LPDEST");
  if (name == nullptr) {
    name = std::getenv("PRINTER");
    // Many environments have this value, which means no particular printer.
    if (name != nullptr && name == "lp"sv) name = nullptr;
  }
  if (name != nullptr) return splitAt(std::string_view(name).find('/'), name);
  std::optional<DestinationName> found;
  // The user's file comes last and overrides the administrator's.
  for (const auto& file : defaults)
    if (auto destination = defaultDestination(file)) found = std::move(destination);
  return found;
}

Printer findPrinter(const Connection& connection, const std::optional<std::string>& name) {
  refuseOddDefaults();
  const auto defaults = savedDefaults();
  const auto destination = name ? splitAt(name->rfind('/'), *name) : localDefault(defaults);
  // For a printer whose name is known beforehand, libcups reads only its first line in each file.
  const auto lines = destination ? SavedLines::first : SavedLines::all;
  auto saved = savedOptions(defaults, destination, lines);
  const auto facts =
      askFacts(connection, destination ? std::optional(destination->printer) : std::nullopt, saved);
  if (!facts) throw notFound(connection, name);
  Printer printer;
  if (auto known = textIn(facts, "printer-name")) {
    printer.name = *std::move(known);
  } else {
    throw namelessPrinter(connection);
  }
  if (destination) printer.instance = destination->instance;
  const DestinationName own{printer.name, printer.instance};
  if (!destination) saved = savedOptions(defaults, own, lines);
  printer.savedForAllUsers = savedOptions(std::span(defaults).first(1), own, lines);
  printer.saved = withoutServers(std::move(saved), facts);
  printer.queueDefaults = serverDefaults(facts, IPP_TAG_NAME);
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
                  "; nothing was sent. Let it accept them again with cupsaccept " + printer.name +
                      ", or choose another printer with -d");
  }
  if (printer.stopped) {
    report(stoppedFact(printer).english() + "; the job waits until the printer is started with cupsenable " +
           printer.name);
  }
}

}  // namespace tandemtrim::host
