#include "host/cups/printer_facts.hpp"

#include <string_view>
#include <utility>

#include "host/cups/connection/attributes.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::string_view kDefault = "-default";

MessageHandle defaultPrinterRequest() {
  MessageHandle request(ippNewRequest(IPP_OP_CUPS_GET_DEFAULT));
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  return request;
}

ipp_attribute_t* findDefault(const MessageHandle& facts, const std::string& keyword) {
  return findAttribute(facts, keyword + std::string(kDefault));
}

// Whether the option is a fact about the printer, which no job can change, or the server's own default.
bool comesFromServer(const MessageHandle& facts, const Option& option) {
  if (findAttribute(facts, option.keyword) != nullptr) return true;
  auto* const value = findDefault(facts, option.keyword);
  if (value == nullptr) return false;
  const MessageHandle scratch(ippNew());
  auto* const encoded =
      cupsEncodeOption(scratch.get(), IPP_TAG_JOB, option.keyword.c_str(), option.value.c_str());
  return attributeText(encoded) == attributeText(value);
}

// The keyword of the option that the attribute is the default of; empty for every other attribute.
std::string keywordOf(ipp_attribute_t* attribute) {
  const char* const name = ippGetName(attribute);
  if (name == nullptr) return {};
  std::string_view keyword = name;
  if (!keyword.ends_with(kDefault)) return {};
  keyword.remove_suffix(kDefault.size());
  return std::string(keyword);
}

}  // namespace

std::vector<std::string> printerNames(const Connection& connection) {
  MessageHandle request(ippNewRequest(IPP_OP_CUPS_GET_PRINTERS));
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
               "printer-name");
  const auto answer = connection.ask(std::move(request), "/");
  // A server without printers answers "not found".
  if (isError(answer) && ippGetStatusCode(answer.get()) != IPP_STATUS_ERROR_NOT_FOUND)
    throw connection.lastFailure();
  return textsIn(answer, "printer-name");
}

std::string existingPrinters(const Connection& connection) {
  std::string names;
  try {
    for (const auto& name : printerNames(connection)) names += (names.empty() ? "" : ", ") + name;
  } catch (const Failure&) {
    if (connection.isSilent()) throw;
    return "choose one that lpstat -e lists, with -d";
  }
  return names.empty() ? "the server has no printer; add one with lpadmin" : "choose one with -d: " + names;
}

// Not all attributes of the printer, since listing all that it supports takes longer than a job.
std::vector<std::string> namesToAsk(const Options& saved) {
  std::vector<std::string> names{"printer-name", "printer-is-accepting-jobs", "printer-state",
                                 "printer-state-message", "printer-defaults"};
  for (const auto& option : saved) {
    // The server would reject the whole request for a longer name.
    if (option.keyword.size() + kDefault.size() > IPP_MAX_NAME - 1) continue;
    names.push_back(option.keyword);
    names.push_back(option.keyword + std::string(kDefault));
  }
  return names;
}

MessageHandle askFacts(const Connection& connection, const std::optional<std::string>& printer,
                       const Options& saved) {
  // No printer's name contains '#', which begins an address's fragment; the request would drop the rest.
  if (printer && printer->find('#') != std::string::npos) return nullptr;
  auto request = printer ? printerRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, *printer) : defaultPrinterRequest();
  requestAttributes(request, namesToAsk(saved));
  auto answer = connection.ask(std::move(request), printer ? printerResource(*printer) : "/");
  if (ippGetStatusCode(answer.get()) == IPP_STATUS_ERROR_NOT_FOUND) return nullptr;
  if (isError(answer)) throw connection.lastFailure();
  return answer;
}

Options withoutServers(Options saved, const MessageHandle& facts) {
  std::erase_if(saved, [&](const Option& option) { return comesFromServer(facts, option); });
  for (auto& option : saved) {
    if (auto spelled = keywordOf(findDefault(facts, option.keyword)); !spelled.empty())
      option.keyword = std::move(spelled);
  }
  return saved;
}

Options serverDefaults(const MessageHandle& facts, const std::optional<ipp_tag_t>& type) {
  Options defaults;
  for (auto* attribute = ippFirstAttribute(facts.get()); attribute != nullptr;
       attribute = ippNextAttribute(facts.get())) {
    const auto tag = ippGetValueTag(attribute);
    auto keyword = keywordOf(attribute);
    if (!keyword.empty() && tag != IPP_TAG_NOVALUE && tag == type.value_or(tag))
      setOption(defaults, {std::move(keyword), attributeText(attribute)});
  }
  return defaults;
}

}  // namespace tandemtrim::host
