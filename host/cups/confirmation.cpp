#include "host/cups/confirmation.hpp"

#include <algorithm>
#include <iterator>

#include "host/cups/attributes.hpp"
#include "host/cups/job.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The job's attribute that shows what became of an option.
std::string attributeOf(const std::string& keyword) {
  const bool isFormat = keyword == "document-format" || keyword == "raw";
  return isFormat ? "document-format-supplied" : keyword;
}

// What libcups makes of an option when it creates a job; null when it leaves the option out.
ipp_attribute_t* encode(const MessageHandle& request, const Option& option) {
  encodeOptions(request, {option});
  return findAttribute(request, option.keyword);
}

bool isText(ipp_attribute_t* attribute) {
  const auto tag = ippGetValueTag(attribute);
  return ippGetCount(attribute) == 1 &&
         (tag == IPP_TAG_NAME || tag == IPP_TAG_KEYWORD || tag == IPP_TAG_TEXT);
}

// A text must equal the value that was sent. Numbers and ranges have several spellings, so they are compared
// as libcups spells them.
bool holds(const MessageHandle& job, const Option& option) {
  const auto name = attributeOf(option.keyword);
  auto* const held = findAttribute(job, name);
  if (held == nullptr) return false;
  if (name != option.keyword) return ippGetString(held, 0, nullptr) == documentFormat({option});
  if (isText(held)) return ippGetString(held, 0, nullptr) == option.value;
  const MessageHandle request(ippNewRequest(IPP_OP_CREATE_JOB));
  auto* const asked = encode(request, option);
  return asked != nullptr && attributeText(asked) == attributeText(held);
}

}  // namespace

Options optionsOfTheJob(const Options& options) {
  Options kept;
  std::ranges::copy_if(options, std::back_inserter(kept), [](const Option& option) {
    return !option.keyword.starts_with("notify-") && option.keyword != "job-name";
  });
  return kept;
}

std::vector<std::string> lostOptions(const MessageHandle& jobAttributes, const Options& sent) {
  std::vector<std::string> lost;
  for (const auto& option : sent) {
    if (!holds(jobAttributes, option)) lost.push_back(option.keyword);
  }
  return lost;
}

std::optional<std::vector<std::string>> lostOptions(const Connection& connection, const Printer& printer,
                                                    int job, const Options& sent) {
  auto request = printerRequest(IPP_OP_GET_JOB_ATTRIBUTES, printer.name);
  ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
  std::vector<std::string> names{"job-id"};
  for (const auto& option : sent) names.push_back(attributeOf(option.keyword));
  requestAttributes(request, names);
  const auto answer = connection.ask(std::move(request), printerResource(printer.name));
  const auto status = ippGetStatusCode(answer.get());
  if (status == IPP_STATUS_ERROR_NOT_FOUND) return std::nullopt;
  if (status >= IPP_STATUS_ERROR_BAD_REQUEST) throw connection.lastFailure();
  return lostOptions(answer, sent);
}

}  // namespace tandemtrim::host
