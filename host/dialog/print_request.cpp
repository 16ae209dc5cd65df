#include "host/dialog/print_request.hpp"

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/dialog/settings/queue_defaults.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

std::optional<Failure> useForAllJobs(const Options& options, const Connection& connection,
                                     const Printer& printer, const Report& report) {
  try {
    saveAsDefault(connection, printer, keepable(options));
    return std::nullopt;
  } catch (const Failure& failure) {
    report("the job was sent, but its settings were not saved for all jobs: " + failure.fact().english());
    return Failure(Trouble::notKeptForAllJobs, failure.fact());
  }
}

// Whether the server has the whole job in spite of this failure.
bool isSent(const Failure& failure) {
  return failure.trouble() == Trouble::unconfirmedSettings || failure.trouble() == Trouble::lostSettings;
}

}  // namespace

SendResult sendRequest(const PrintRequest& request, std::vector<Document>& documents,
                       const Progress& progress, const Report& report) {
  const Connection connection(request.server);
  const auto printer = findPrinter(connection, request.printer);
  checkState(printer, [](const std::string&) {});
  if (printer.stopped) throw Failure(Trouble::stopped, stoppedFact(printer), "; nothing was sent");
  const auto options = withoutQueueDefaults(request.options, printer.serverDefaults);
  const auto title = request.title.value_or(documents.front().name());
  progress(std::nullopt, title, 0, documents.front().size());
  SendResult result{sendAndConfirm(connection, printer, title, options, documents, progress), {}};
  auto& [job, problems] = result;
  if (connection.warning()) report(*connection.warning());
  if (job.failure && !isSent(*job.failure)) throw Failure(*job.failure);
  if (request.useForAllJobs && !job.failure) {
    if (const auto notKept =
            useForAllJobs(withoutKeywords(options, request.notKept), connection, printer, report))
      problems.push_back(*notKept);
  }
  if (job.failure) problems.push_back(*job.failure);
  return result;
}

}  // namespace tandemtrim::host
