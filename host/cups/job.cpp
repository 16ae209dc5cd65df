#include "host/cups/job.hpp"

#include "host/cups/attributes.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kReconnect = 1000;  // milliseconds

// The number of a new job without a document, or 0 when the server refuses it. libcups's own function for
// that has the server list all that the printer supports first, which takes longer than the job.
int createJob(const Connection& connection, const Printer& printer, const std::string& title,
              const Options& options) {
  auto request = printerRequest(IPP_OP_CREATE_JOB, printer.name);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
  encodeOptions(request, options);
  const MessageHandle answer(
      cupsDoRequest(connection.get(), request.release(), printerResource(printer.name).c_str()));
  auto* const number = findAttribute(answer, "job-id");
  return number == nullptr ? 0 : ippGetInteger(number, 0);
}

// A job that is cancelled unless it is sent completely.
class UnfinishedJob {
 public:
  UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                const Options& options)
      : connection_(connection), printer_(printer), number_(createJob(connection, printer, title, options)) {
    if (number_ == 0) throw refused("refuses the job");
  }
  UnfinishedJob(const UnfinishedJob&) = delete;
  UnfinishedJob& operator=(const UnfinishedJob&) = delete;
  ~UnfinishedJob() {
    if (number_ == 0) return;
    // A connection in the middle of a document takes no other request.
    if (httpGetState(connection_.get()) != HTTP_STATE_WAITING)
      httpReconnect2(connection_.get(), kReconnect, nullptr);
    cupsCancelJob2(connection_.get(), printer_.name.c_str(), number_, 0);
  }

  void send(Document& document, const std::string& format, bool last, const Progress& progress) const {
    auto* const http = connection_.get();
    const char* const printer = printer_.name.c_str();
    auto status =
        cupsStartDocument(http, printer, number_, document.name().c_str(), format.c_str(), last ? 1 : 0);
    std::uint64_t sent = 0;
    if (status == HTTP_STATUS_CONTINUE) {
      document.read([&](std::span<const char> piece) {
        status = cupsWriteRequestData(http, piece.data(), piece.size());
        sent += piece.size();
        progress(document.name(), sent, document.size());
        return status == HTTP_STATUS_CONTINUE;
      });
    }
    if (status != HTTP_STATUS_CONTINUE || cupsFinishDocument(http, printer) >= IPP_STATUS_ERROR_BAD_REQUEST) {
      throw refused("did not take " + document.name());
    }
    // A silent server may hold the whole document and print it when it goes on.
    if (connection_.isSilent()) {
      throw Failure(Trouble::unconfirmedJob,
                    printer_.name + " did not confirm " + document.name() + "; job " +
                        std::to_string(number_) + " may still be printed",
                    " (see lpstat -o " + printer_.name + "): " + connection_.lastFailure().what());
    }
  }

  // Gives the job's number and leaves the job to the server.
  int finish() {
    const int number = number_;
    number_ = 0;
    return number;
  }

 private:
  [[nodiscard]] Failure refused(const std::string& what) const {
    const auto last = connection_.lastFailure();
    return Failure(last.trouble(), printer_.name + " " + what + "; nothing was printed: " + last.fact(),
                   last.remedy());
  }

  const Connection& connection_;
  const Printer& printer_;
  int number_;
};

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

int sendJob(const Connection& connection, const Printer& printer, const std::string& title,
            const Options& options, std::vector<Document>& documents, const Progress& progress) {
  UnfinishedJob job(connection, printer, title, options);
  const auto format = documentFormat(options);
  for (auto& document : documents) job.send(document, format, &document == &documents.back(), progress);
  return job.finish();
}

}  // namespace tandemtrim::host
