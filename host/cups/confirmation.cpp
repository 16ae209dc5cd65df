#include "host/cups/confirmation.hpp"

#include <algorithm>
#include <iterator>

#include "host/cups/connection/attributes.hpp"
#include "host/cups/job.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The job's attribute that shows the value of an option.
std::string attributeOf(const std::string& keyword) {
  const bool isFormat = keyword == "document-format" || keyword == "raw";
  return isFormat ? "document-format-supplied" : keyword;
}

// The option as libcups encodes it for a new job; null when libcups leaves it out.
ipp_attribute_t* encode(const MessageHandle& request, const Option& option) {
  encodeOptions(request, {option});
  return findAttribute(request, option.keyword);
}

// Whether the server has since started a job that waited for a time of day.
bool isStarted(const std::string& atServer, const Option& option) {
  return option.keyword == "job-hold-until" && option.value != "indefinite" && atServer == "no-hold";
}

// A text must equal the value that was sent. Numbers and ranges have several spellings, so they are compared
// as libcups spells them. The options raw and document-format share an attribute.
bool isAsSent(ipp_attribute_t* atServer, const Option& option, const Options& sent) {
  if (attributeOf(option.keyword) != option.keyword) return attributeText(atServer) == documentFormat(sent);
  if (const auto text = onlyText(atServer)) return *text == option.value || isStarted(*text, option);
  const MessageHandle request(ippNewRequest(IPP_OP_CREATE_JOB));
  auto* const asked = encode(request, option);
  return asked != nullptr && attributeText(asked) == attributeText(atServer);
}

std::vector<LostOption> lostOptions(const MessageHandle& job, const Options& sent) {
  std::vector<LostOption> lost;
  for (const auto& option : sent) {
    auto* const atServer = findAttribute(job, attributeOf(option.keyword));
    if (atServer == nullptr) {
      lost.push_back({option.keyword, option.value, std::nullopt});
    } else if (!isAsSent(atServer, option, sent)) {
      lost.push_back({option.keyword, option.value, attributeText(atServer)});
    }
  }
  return lost;
}

std::optional<ipp_jstate_t> stateIn(const MessageHandle& job) {
  const auto state = enumIn(job, "job-state");
  const bool isKnown = state >= IPP_JSTATE_PENDING && state <= IPP_JSTATE_COMPLETED;
  return isKnown ? std::optional(static_cast<ipp_jstate_t>(*state)) : std::nullopt;
}

std::optional<std::uint64_t> numberIn(const MessageHandle& job, const char* name) {
  const auto number = integerIn(job, name);
  if (!number || *number < 0) return std::nullopt;
  return static_cast<std::uint64_t>(*number);
}

std::string outOf(std::uint64_t arrived, std::uint64_t sent, const std::string& unit) {
  return std::to_string(arrived) + " of " + std::to_string(sent) + " " + unit;
}

bool isIncoming(const ReportedJob& reported) {
  return reported.reasons.find("job-incoming") != std::string::npos;
}

// A server may add pages to a job, so only less than was sent counts as incomplete.
std::string incompleteness(const MessageHandle& job, const ReportedJob& reported, const JobContent& sent) {
  const auto documents = numberIn(job, "number-of-documents");
  // A server may delete the documents once they are printed.
  const bool isDone = reported.state == IPP_JSTATE_COMPLETED && documents == 0U;
  if (documents && *documents < sent.documents && !isDone)
    return outOf(*documents, sent.documents, "documents");
  const auto kilobytes = (sent.bytes + 1023) / 1024;
  const auto size = numberIn(job, "job-k-octets");
  if (size && *size < kilobytes) return outOf(*size, kilobytes, "KB");
  if (!documents && !size && !sent.isAnswered) return "an unknown part";
  return isIncoming(reported) ? "all but the last document" : "";
}

// CUPS counts a document only once all of it has arrived. One that breaks off between two HTTP chunks counts
// as whole.
bool isArriving(const MessageHandle& job, const ReportedJob& reported, const JobContent& sent) {
  const auto documents = numberIn(job, "number-of-documents");
  return !documents || *documents < sent.documents || isIncoming(reported);
}

}  // namespace

Options optionsOfTheJob(const Options& options) {
  Options kept;
  std::ranges::copy_if(options, std::back_inserter(kept), [](const Option& option) {
    return !option.keyword.starts_with("notify-") && option.keyword != "job-name";
  });
  return kept;
}

std::vector<std::string> attributesToAsk(const JobContent& sent) {
  std::vector<std::string> names{"job-id",
                                 "job-state",
                                 "job-state-reasons",
                                 "number-of-documents",
                                 "job-printer-state-message",
                                 "job-media-sheets-completed",
                                 "job-k-octets"};
  for (const auto& option : sent.options) names.push_back(attributeOf(option.keyword));
  return names;
}

ReportedJob reportedJob(const MessageHandle& jobAttributes, const JobContent& sent) {
  ReportedJob reported;
  reported.state = stateIn(jobAttributes).value_or(reported.state);
  for (const auto& reason : textsIn(jobAttributes, "job-state-reasons")) {
    if (reason != "none") reported.reasons += (reported.reasons.empty() ? "" : ",") + reason;
  }
  reported.message = textIn(jobAttributes, "job-printer-state-message").value_or("");
  reported.sheets = numberIn(jobAttributes, "job-media-sheets-completed").value_or(reported.sheets);
  reported.incomplete = incompleteness(jobAttributes, reported, sent);
  reported.isArriving = !reported.incomplete.empty() && isArriving(jobAttributes, reported, sent);
  reported.lost = lostOptions(jobAttributes, sent.options);
  return reported;
}

std::optional<ReportedJob> askForJob(const Connection& connection, const Printer& printer, int job,
                                     const JobContent& sent) {
  auto request = printerRequest(IPP_OP_GET_JOB_ATTRIBUTES, printer.name);
  ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", job);
  requestAttributes(request, attributesToAsk(sent));
  const auto answer = connection.ask(std::move(request), printerResource(printer.name));
  if (ippGetStatusCode(answer.get()) == IPP_STATUS_ERROR_NOT_FOUND) return std::nullopt;
  if (isError(answer)) throw connection.lastFailure();
  const bool isOfTheJob = integerIn(answer, "job-id") == job && stateIn(answer);
  return isOfTheJob ? std::optional(reportedJob(answer, sent)) : std::nullopt;
}

}  // namespace tandemtrim::host
