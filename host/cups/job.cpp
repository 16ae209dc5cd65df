#include "host/cups/job.hpp"

#include <utility>

#include "host/cups/attributes.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// What the server did not do with the document, in the words of its last answer.
Failure refused(const Connection& connection, const std::string& what) {
  const auto last = connection.lastFailure();
  return Failure(last.trouble(), what + ": " + last.fact(), last.remedy());
}

// The number of a new job without a document. libcups's own function for that has the server list all that
// the printer supports first, which takes longer than the job.
int createJob(const Connection& connection, const Printer& printer, const std::string& title,
              const Options& options) {
  auto request = printerRequest(IPP_OP_CREATE_JOB, printer.name);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
  encodeOptions(request, options);
  const MessageHandle answer(
      cupsDoRequest(connection.get(), request.release(), printerResource(printer.name).c_str()));
  if (!answer) {
    throw refused(connection, printer.name +
                                  " did not answer the request for a job; nothing was printed, but an empty "
                                  "job may wait there");
  }
  auto* const number = ippFindAttribute(answer.get(), "job-id", IPP_TAG_INTEGER);
  if (number == nullptr) throw refused(connection, printer.name + " refuses the job; nothing was printed");
  return ippGetInteger(number, 0);
}

std::optional<std::string> valueOf(const Options& options, const std::string& keyword) {
  for (const auto& option : options) {
    if (option.keyword == keyword) return option.value;
  }
  return std::nullopt;
}

}  // namespace

std::string documentFormat(const Options& options) {
  if (const auto format = valueOf(options, "document-format")) return *format;
  return valueOf(options, "raw") ? CUPS_FORMAT_RAW : CUPS_FORMAT_AUTO;
}

UnfinishedJob::UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                             const Options& options)
    : connection_(connection), printer_(printer), number_(createJob(connection, printer, title, options)) {}

SentDocument UnfinishedJob::send(Document& document, const std::string& format, bool last,
                                 const Progress& progress) const {
  auto* const http = connection_.get();
  const auto& name = document.name();
  auto status = cupsStartDocument(http, printer_.name.c_str(), number_, name.c_str(), format.c_str(), last);
  std::uint64_t sent = 0;
  if (status == HTTP_STATUS_CONTINUE) {
    document.read([&](std::span<const char> piece) {
      if (!piece.empty()) status = cupsWriteRequestData(http, piece.data(), piece.size());
      sent += piece.size();
      progress(name, sent, document.size());
      return status == HTTP_STATUS_CONTINUE;
    });
  }
  if (status != HTTP_STATUS_CONTINUE) throw refused(connection_, printer_.name + " did not take " + name);
  if (document.size() > sent) {
    throw Failure(Trouble::document, name + " shrank while it was sent: " + std::to_string(sent) + " of " +
                                         std::to_string(*document.size()) + " bytes were left");
  }
  // Not cupsFinishDocument(): where the connection breaks it gives the status of an earlier answer.
  const MessageHandle answer(cupsGetResponse(http, printerResource(printer_.name).c_str()));
  if (!answer) return {sent, refused(connection_, printer_.name + " did not confirm " + name)};
  if (ippGetStatusCode(answer.get()) >= IPP_STATUS_ERROR_BAD_REQUEST)
    throw refused(connection_, printer_.name + " did not take " + name);
  return {sent, std::nullopt};
}

bool UnfinishedJob::cancel() {
  if (std::exchange(isKept_, true)) return false;
  try {
    connection_.persist([&] {
      const auto status = cupsCancelJob2(connection_.get(), printer_.name.c_str(), number_, 0);
      if (status >= IPP_STATUS_ERROR_BAD_REQUEST || connection_.isSilent()) throw connection_.lastFailure();
    });
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace tandemtrim::host
