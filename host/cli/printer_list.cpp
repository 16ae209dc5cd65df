#include "host/cli/printer_list.hpp"

#include <algorithm>
#include <iomanip>

#include "host/cups/printer.hpp"
#include "host/cups/printer_facts.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/failure.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

// "panel", "no panel", or why the panel that the printer's PPD names cannot be used.
std::string panelText(const Connection& connection, const std::string& name,
                      const std::optional<std::string>& plugin) {
  try {
    Printer printer;
    printer.name = name;
    const auto ppd = queuePpd(connection, printer);
    return bundleOfPrinter(plugin, ppd.get()) ? "panel" : "no panel";
  } catch (const Failure& failure) {
    if (failure.trouble() == Trouble::noServer) throw;
    return "no panel: " + failure.fact().english();
  }
}

}  // namespace

void listPrinters(const CommandLine& line, std::ostream& out, const Report& report) {
  refuseOddDefaults();
  const Connection connection(line.server);
  const auto names = printerNames(connection);
  if (names.empty()) return report("the server has no printer; add one with lpadmin");
  const auto defaultPrinter = connection.destination(nullptr, nullptr);
  const auto longest = std::ranges::max(names, {}, &std::string::size).size();
  for (const auto& name : names) {
    out << std::left << std::setw(static_cast<int>(longest)) << plainText(name) << "  "
        << plainText(panelText(connection, name, line.plugin));
    if (defaultPrinter && isSameKeyword(defaultPrinter->name, name)) out << "  default";
    out << '\n';
  }
}

}  // namespace tandemtrim::host
