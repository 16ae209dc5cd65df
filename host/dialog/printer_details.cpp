#include "host/dialog/printer_details.hpp"

#include <utility>

#include "host/cups/ppd.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/queue_ppd.hpp"

namespace tandemtrim::host {
namespace {

std::shared_ptr<PrinterDetails> readDetails(const std::optional<std::string>& server,
                                            const std::optional<std::string>& name) {
  const Connection connection(server);
  auto printer = findPrinter(connection, name);
  auto ppd = queuePpd(connection, printer);
  // GTK's rows have the PPD's titles in the user's language, too.
  if (ppd) ppdLocalize(ppd.get());
  auto saved = asSpelled(ppd.get(), std::move(printer.saved));
  auto destination = printer.name + (printer.instance ? '/' + *printer.instance : "");
  return std::make_shared<PrinterDetails>(
      PrinterDetails{std::move(printer.name), std::move(destination), std::move(ppd), std::move(saved),
                     std::move(printer.savedForAllUsers), std::move(printer.queueDefaults),
                     std::move(printer.serverDefaults)});
}

}  // namespace

std::string destinationOn(const std::string& printer, const std::string& first) {
  return first.starts_with(printer + '/') ? first : printer;
}

void DetailsReader::read(const std::optional<std::string>& printer, Done done) {
  reading_ = std::make_shared<int>(0);
  inBackground<std::shared_ptr<PrinterDetails>>(
      reading_, [server = server_, printer] { return readDetails(server, printer); }, std::move(done), ask_);
}

}  // namespace tandemtrim::host
