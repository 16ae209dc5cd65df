#include "host/cups/saved_defaults.hpp"

#include <algorithm>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

class Destinations {
 public:
  explicit Destinations(const Connection& connection) { count_ = cupsGetDests2(connection.get(), &all_); }
  Destinations(const Destinations&) = delete;
  Destinations& operator=(const Destinations&) = delete;
  ~Destinations() { cupsFreeDests(count_, all_); }

  // Whether the server listed the printer: one that failed lists nothing, and what is saved for other
  // printers would go with it.
  [[nodiscard]] bool lists(const Printer& printer) const {
    return cupsGetDest(printer.name.c_str(), nullptr, count_, all_) != nullptr;
  }

  // The user's record of the printer, made when there is none.
  cups_dest_t* find(const Printer& printer) {
    const auto* const instance = printer.destination->instance;
    count_ = cupsAddDest(printer.name.c_str(), instance, count_, &all_);
    return cupsGetDest(printer.name.c_str(), instance, count_, all_);
  }

  bool save(const Connection& connection) { return cupsSetDests2(connection.get(), count_, all_) == 0; }

 private:
  cups_dest_t* all_ = nullptr;
  int count_ = 0;
};

// The file of saved options has one line a printer, in which # begins a comment and a keyword without a value
// is a switch.
bool fitsIntoLine(const std::string& value) {
  const auto breaksLine = [](char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '#';
  };
  return !value.empty() && std::none_of(value.begin(), value.end(), breaksLine);
}

Failure cannotKeep(const std::string& keyword) {
  return Failure(Trouble::notKeptForAllJobs,
                 "CUPS cannot keep the value of " + keyword +
                     " as a default (it keeps none that is empty, is very long, or "
                     "holds # or a line break)",
                 "; give another by -o " + keyword + "=...");
}

}  // namespace

void saveAsDefault(const Connection& connection, const Printer& printer, const Options& options) {
  for (const auto& [keyword, value] : options) {
    if (!fitsIntoLine(value)) throw cannotKeep(keyword);
  }
  Destinations destinations(connection);
  if (!destinations.lists(printer) || connection.isSilent()) throw connection.lastFailure();
  auto* const mine = destinations.find(printer);
  for (const auto& [keyword, value] : options) {
    mine->num_options = cupsAddOption(keyword.c_str(), value.c_str(), mine->num_options, &mine->options);
  }
  if (!destinations.save(connection)) {
    const bool serverFailed = connection.isSilent() || cupsLastError() >= IPP_STATUS_REDIRECTION_OTHER_SITE;
    if (serverFailed) throw connection.lastFailure();
    throw Failure("the defaults for " + printer.name +
                  " cannot be kept: CUPS cannot write its file lpoptions");
  }

  const auto kept = connection.destination(printer.name.c_str(), printer.destination->instance);
  if (!kept) throw connection.lastFailure();
  for (const auto& [keyword, value] : options) {
    const char* const found = cupsGetOption(keyword.c_str(), kept->num_options, kept->options);
    if (found == nullptr || value != found) throw cannotKeep(keyword);
  }
}

}  // namespace tandemtrim::host
