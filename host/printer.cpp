#include "host/printer.hpp"

#include <array>
#include <span>
#include <utility>
#include <vector>

#include <unistd.h>

#include "host/attributes.hpp"
#include "host/failure.hpp"
#include "host/ppd.hpp"

namespace tandemtrim::host {
namespace {

struct Name {
  std::string printer;
  std::optional<std::string> instance;
};

Name splitName(const std::string& text) {
  const auto slash = text.find('/');
  if (slash == std::string::npos) return {text, std::nullopt};
  return {text.substr(0, slash), text.substr(slash + 1)};
}

// " (A, B)" of all printers that the server knows.
std::string existingPrinters(const Connection& connection) {
  MessageHandle request(ippNewRequest(IPP_OP_CUPS_GET_PRINTERS));
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
               "printer-name");
  const auto answer = connection.ask(std::move(request), "/");
  std::string names;
  for (auto* attribute = ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME); attribute != nullptr;
       attribute = ippFindNextAttribute(answer.get(), "printer-name", IPP_TAG_NAME)) {
    if (!names.empty()) names += ", ";
    names += ippGetString(attribute, 0, nullptr);
  }
  return names.empty() ? "the server has no printer; add one by lpadmin" : "choose one by -d: " + names;
}

// By their names alone: the lists of all that a printer supports take the server and libcups longer than a
// job.
MessageHandle askAttributes(const Connection& connection, const std::string& printer,
                            const std::vector<std::string>& names) {
  std::vector<const char*> texts;
  texts.reserve(names.size());
  for (const auto& name : names) texts.push_back(name.c_str());
  auto request = printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, printer);
  ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                static_cast<int>(texts.size()), nullptr, texts.data());
  auto answer = connection.ask(std::move(request), printerResource(printer));
  const auto status = ippGetStatusCode(answer.get());
  if (status == IPP_STATUS_ERROR_NOT_FOUND) {
    throw Failure(Trouble::noPrinter, "there is no printer \"" + printer + '"',
                  "; " + existingPrinters(connection));
  }
  if (status >= IPP_STATUS_ERROR_BAD_REQUEST) throw connection.lastFailure();
  return answer;
}

DestinationHandle defaultDestination(const Connection& connection) {
  DestinationHandle destination(cupsGetNamedDest(connection.get(), nullptr, nullptr));
  if (!destination) {
    if (cupsLastError() != IPP_STATUS_ERROR_NOT_FOUND) throw connection.lastFailure();
    throw Failure(
        Trouble::noDefaultPrinter,
        "there is no default printer, or the one that LPDEST, PRINTER or lpoptions name does not exist",
        "; " + existingPrinters(connection));
  }
  return destination;
}

// Whether libcups added this option because the server says so of the printer: a fact about it, or the value
// that the server itself supplies for a job without the option. A text that the administrator made the
// default of an option of the printer's own counts as saved, since a panel would bring its own default
// otherwise; CUPS knows no "-supported" of such an option.
bool comesFromServer(const MessageHandle& answer, const cups_option_t& option) {
  if (findAttribute(answer, option.name) != nullptr) return true;
  const std::string name = option.name;
  auto* const value = findAttribute(answer, name + "-default");
  if (value == nullptr) return false;
  if (ippGetValueTag(value) == IPP_TAG_NAME && findAttribute(answer, name + "-supported") == nullptr)
    return false;
  const MessageHandle scratch(ippNew());
  auto* const encoded = cupsEncodeOption(scratch.get(), IPP_TAG_JOB, option.name, option.value);
  return encoded != nullptr && attributeText(encoded) == attributeText(value);
}

// Those of the destination's options that somebody saved.
Options savedOptions(const Connection& connection, const cups_dest_t& destination) {
  const std::span options(destination.options, static_cast<std::size_t>(destination.num_options));
  std::vector<std::string> names{"printer-name"};
  for (const cups_option_t& option : options) {
    for (const char* ending : {"", "-default", "-supported"})
      names.push_back(option.name + std::string(ending));
  }
  const auto answer = askAttributes(connection, destination.name, names);
  Options saved;
  for (const cups_option_t& option : options) {
    if (!comesFromServer(answer, option)) saved.push_back({option.name, option.value});
  }
  return saved;
}

std::string withState(const std::string& fact, const Printer& printer) {
  return printer.name + fact + (printer.stateMessage.empty() ? "" : " (" + printer.stateMessage + ")");
}

}  // namespace

Printer findPrinter(const Connection& connection, const std::optional<std::string>& name) {
  const std::vector<std::string> state{"printer-is-accepting-jobs", "printer-state", "printer-state-message"};
  Printer printer;
  MessageHandle attributes;
  if (name) {
    // Asked for first, because libcups searches the whole network for a printer that the server does not
    // have.
    const auto [printerName, instance] = splitName(*name);
    attributes = askAttributes(connection, printerName, state);
    printer.destination.reset(
        cupsGetNamedDest(connection.get(), printerName.c_str(), instance ? instance->c_str() : nullptr));
    if (!printer.destination) throw connection.lastFailure();
  } else {
    printer.destination = defaultDestination(connection);
    attributes = askAttributes(connection, printer.destination->name, state);
  }
  printer.name = printer.destination->name;
  printer.saved = savedOptions(connection, *printer.destination);
  if (auto* accepting = findAttribute(attributes, "printer-is-accepting-jobs")) {
    printer.accepting = ippGetBoolean(accepting, 0) != 0;
  }
  if (auto* value = findAttribute(attributes, "printer-state")) {
    printer.stopped = ippGetInteger(value, 0) == IPP_PSTATE_STOPPED;
  }
  if (auto* message = findAttribute(attributes, "printer-state-message")) {
    printer.stateMessage = ippGetString(message, 0, nullptr);
  }
  return printer;
}

std::string stoppedText(const Printer& printer) { return withState(" is stopped", printer); }

void checkState(const Printer& printer, const Note& note) {
  if (!printer.accepting) {
    throw Failure(Trouble::rejecting, withState(" does not accept jobs", printer),
                  "; nothing was sent. Let it accept them again by cupsaccept " + printer.name +
                      ", or choose another printer by -d");
  }
  if (printer.stopped) {
    note(stoppedText(printer) + "; the job waits until the printer is started by cupsenable " + printer.name);
  }
}

PpdHandle queuePpd(const Connection& connection, const Printer& printer) {
  std::array<char, HTTP_MAX_URI> path{};
  time_t modified = 0;
  const auto status =
      cupsGetPPD3(connection.get(), printer.name.c_str(), &modified, path.data(), path.size());
  if (status == HTTP_STATUS_NOT_FOUND) return nullptr;
  if (status != HTTP_STATUS_OK) {
    const auto last = connection.lastFailure();
    throw last.trouble() == Trouble::other ? Failure(Trouble::details, last.fact()) : last;
  }
  // libcups leaves a temporary file behind, or a link to the server's own file when both run on one machine.
  struct Removed {
    const char* path;
    ~Removed() { unlink(path); }
  } const removed{path.data()};
  return openPpd(path.data(), "of " + printer.name);
}

}  // namespace tandemtrim::host
