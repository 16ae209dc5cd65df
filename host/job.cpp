#include "host/job.hpp"

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kReconnect = 1000;  // milliseconds

// A job that is cancelled unless it is sent completely.
class UnfinishedJob {
 public:
  UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                const Options& options)
      : connection_(connection),
        printer_(printer),
        info_(cupsCopyDestInfo(connection.get(), printer.destination.get())) {
    const OptionList list(options);
    if (info_) {
      cupsCreateDestJob(connection.get(), printer.destination.get(), info_.get(), &number_, title.c_str(),
                        list.count(), list.get());
    }
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
    auto* const destination = printer_.destination.get();
    auto status = cupsStartDestDocument(http, destination, info_.get(), number_, document.name().c_str(),
                                        format.c_str(), 0, nullptr, last ? 1 : 0);
    std::uint64_t sent = 0;
    if (status == HTTP_STATUS_CONTINUE) {
      document.read([&](std::span<const char> piece) {
        status = cupsWriteRequestData(http, piece.data(), piece.size());
        sent += piece.size();
        progress(document.name(), sent, document.size());
        return status == HTTP_STATUS_CONTINUE;
      });
    }
    if (status != HTTP_STATUS_CONTINUE ||
        cupsFinishDestDocument(http, destination, info_.get()) >= IPP_STATUS_ERROR_BAD_REQUEST) {
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
  DestinationInfoHandle info_;
  int number_ = 0;
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
