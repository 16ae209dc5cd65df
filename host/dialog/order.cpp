#include "host/dialog/order.hpp"

#include "host/confirmation.hpp"
#include "host/connection.hpp"
#include "host/failure.hpp"
#include "host/printer.hpp"
#include "host/saved_defaults.hpp"

namespace tandemtrim::host {

SentJob carryOut(const Order& order, const Progress& progress) {
  const Connection connection(order.server);
  const auto printer = findPrinter(connection, order.printer);
  checkState(printer, [](const std::string& waiting) { throw Failure(waiting + "; nothing was sent"); });
  auto& documents = *order.documents;
  progress(documents.front().name(), 0, documents.front().size());
  if (order.useForAllJobs) saveAsDefault(connection, printer, order.options);
  const auto confirmable = optionsOfTheJob(order.options);
  SentJob job{0, printer.name, confirmable.size(), std::nullopt};
  job.number = sendJob(connection, printer, order.title, order.options, documents, progress);
  job.lost = lostOptions(connection, printer, job.number, confirmable);
  return job;
}

}  // namespace tandemtrim::host
