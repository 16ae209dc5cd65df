#include "host/cups/printer_facts.hpp"

#include <span>
#include <string_view>
#include <vector>

#include "host/cups/connection/attributes.hpp"
#include "host/failure.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

// Asks for the named attributes only: the lists of all that a printer supports take longer than a job.
MessageHandle askAttributes(const Connection& connection, const std::string& printer,
                            const std::vector<std::string>& names) {
  const auto nowhere = [&] {
    return Failure(Trouble::noPrinter,
                   Fact(R"(there is no printer "[printer]")"_fact, {{"[printer]", shortText(printer)}}),
                   "; " + existingPrinters(connection));
  };
  // No printer's name contains '#', which begins an address's fragment; the request would drop the rest.
  if (printer.find('#') != std::string::npos) throw nowhere();
  auto request = printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, printer);
  requestAttributes(request, names);
  auto answer = connection.ask(std::move(request), printerResource(printer));
  const auto status = ippGetStatusCode(answer.get());
  if (status == IPP_STATUS_ERROR_NOT_FOUND) throw nowhere();
  if (status >= IPP_STATUS_ERROR_BAD_REQUEST) throw connection.lastFailure();
  return answer;
}

// The printer's state, and the attributes that libcups turns into options.
std::vector<std::string> factsToAsk() {
  return {"printer-is-accepting-jobs",
          "printer-state",
          "printer-state-message",
          "auth-info-required",
          "device-uri",
          "job-sheets-supported",
          "marker-change-time",
          "marker-colors",
          "marker-high-levels",
          "marker-levels",
          "marker-low-levels",
          "marker-message",
          "marker-names",
          "marker-types",
          "printer-commands",
          "printer-defaults",
          "printer-info",
          "printer-is-shared",
          "printer-is-temporary",
          "printer-location",
          "printer-make-and-model",
          "printer-mandatory-job-attributes",
          "printer-name",
          "printer-state-change-time",
          "printer-state-reasons",
          "printer-type",
          "printer-uri-supported"};
}

// The queue's default for an option that CUPS does not know, or null. CUPS has no "-supported" attribute for
// such an option.
ipp_attribute_t* ownDefault(const MessageHandle& answer, const std::string& keyword) {
  auto* const value = findAttribute(answer, keyword + "-default");
  const bool isOwn = value != nullptr && ippGetValueTag(value) == IPP_TAG_NAME &&
                     findAttribute(answer, keyword + "-supported") == nullptr;
  return isOwn ? value : nullptr;
}

// Whether libcups took this option from the server: a fact about the printer, or the server's own default.
bool comesFromServer(const MessageHandle& answer, const Option& option) {
  if (findAttribute(answer, option.keyword) != nullptr) return true;
  auto* const value = findAttribute(answer, option.keyword + "-default");
  if (value == nullptr) return false;
  const MessageHandle scratch(ippNew());
  auto* const encoded =
      cupsEncodeOption(scratch.get(), IPP_TAG_JOB, option.keyword.c_str(), option.value.c_str());
  return encoded != nullptr && attributeText(encoded) == attributeText(value);
}

}  // namespace

std::vector<std::string> printerNames(const Connection& connection) {
  MessageHandle request(ippNewRequest(IPP_OP_CUPS_GET_PRINTERS));
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
               "printer-name");
  const auto answer = connection.ask(std::move(request), "/");
  const auto status = ippGetStatusCode(answer.get());
  // A server without printers answers "not found".
  if (status >= IPP_STATUS_ERROR_BAD_REQUEST && status != IPP_STATUS_ERROR_NOT_FOUND)
    throw connection.lastFailure();
  return textsIn(answer, "printer-name");
}

std::string existingPrinters(const Connection& connection) {
  std::string names;
  try {
    for (const auto& name : printerNames(connection)) names += (names.empty() ? "" : ", ") + name;
  } catch (const Failure&) {
    if (connection.isSilent()) throw;
    return "choose one by -d that lpstat -e lists";
  }
  return names.empty() ? "the server has no printer; add one by lpadmin" : "choose one by -d: " + names;
}

MessageHandle askFacts(const Connection& connection, const std::string& printer) {
  return askAttributes(connection, printer, factsToAsk());
}

std::pair<Options, Options> keptOptions(const Connection& connection, const cups_dest_t& destination,
                                        const MessageHandle& facts) {
  Options candidates;
  std::vector<std::string> names{"printer-name"};
  for (const auto& [name, value] :
       std::span(destination.options, static_cast<std::size_t>(destination.num_options))) {
    const Option option{name, value};
    if (ownDefault(facts, option.keyword) == nullptr && comesFromServer(facts, option)) continue;
    candidates.push_back(option);
    for (const char* ending : {"", "-default", "-supported"}) names.push_back(option.keyword + ending);
  }
  if (candidates.empty()) return {};
  // A candidate was saved by a user, is the queue's default, or is a fact that a newer libcups makes an
  // option.
  const auto answer = askAttributes(connection, destination.name, names);
  Options saved;
  Options ofQueue;
  for (const auto& option : candidates) {
    if (auto* const text = ownDefault(answer, option.keyword))
      ofQueue.push_back({option.keyword, attributeText(text)});
    if (!comesFromServer(answer, option)) saved.push_back(option);
  }
  return {saved, ofQueue};
}

Options serverDefaults(const MessageHandle& facts) {
  constexpr std::string_view kEnding = "-default";
  Options defaults;
  for (auto* attribute = ippFirstAttribute(facts.get()); attribute != nullptr;
       attribute = ippNextAttribute(facts.get())) {
    const char* const name = ippGetName(attribute);
    std::string_view keyword = name == nullptr ? "" : name;
    if (!keyword.ends_with(kEnding) || ippGetValueTag(attribute) == IPP_TAG_NOVALUE) continue;
    keyword.remove_suffix(kEnding.size());
    setOption(defaults, {std::string(keyword), attributeText(attribute)});
  }
  return defaults;
}

}  // namespace tandemtrim::host
