#include "host/dialog/print_request.hpp"

#include <algorithm>
#include <iterator>

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/dialog/settings/queue_defaults.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The options that the job would have without its own: the server's and the administrator's.
Options defaultsOf(const Printer& printer) {
  auto defaults = printer.serverDefaults;
  std::ranges::copy(printer.savedForAllUsers, std::back_inserter(defaults));
  return defaults;
}

std::optional<Failure> useForAllJobs(const Options& options, const std::vector<std::string>& notKept,
                                     const Connection& connection, const Printer& printer,
                                     const Report& report) {
  try {
    replaceDefaults(connection, printer, keepable(withoutKeywords(options, notKept)), notKept);
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
  const auto options = withoutQueueDefaults(request.options, defaultsOf(printer));
  const auto title = request.title.value_or(documents.front().name());
  progress(std::nullopt, title, 0, documents.front().size());
  SendResult result{sendAndConfirm(connection, printer, title, options, documents, progress), {}};
  auto& [job, problems] = result;
  if (connection.warning()) report(*connection.warning());
  if (job.failure && !isSent(*job.failure)) throw Failure(*job.failure);
  if (request.useForAllJobs && !job.failure) {
    if (const auto failure = useForAllJobs(options, request.notKept, connection, printer, report))
      problems.push_back(*failure);
  }
  if (job.failure) problems.push_back(*job.failure);
  return result;
}

}  // namespace tandemtrim::host
