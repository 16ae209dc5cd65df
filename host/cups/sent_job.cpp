#include "host/cups/sent_job.hpp"

#include "host/cups/confirmation.hpp"

namespace tandemtrim::host {

std::string jobText(const SentJob& job) {
  const std::string name = "job " + std::to_string(job.number) + " on " + job.printer;
  if (job.unconfirmed)
    return name + " was sent, but its options could not be confirmed: " + job.unconfirmed->what();
  const std::string start = name + ": ";
  if (!job.lost)
    return start + "sent; the server no longer knows the job, so its options could not be confirmed";
  std::string text = start + std::to_string(job.options - job.lost->size()) + " of " +
                     std::to_string(job.options) + " options confirmed";
  for (const auto& keyword : *job.lost)
    text += (&keyword == &job.lost->front() ? "; lost: " : ", ") + keyword;
  return text;
}

SentJob sendAndConfirm(const Connection& connection, const Printer& printer, const std::string& title,
                       const Options& options, std::vector<Document>& documents, const Progress& progress) {
  const auto confirmable = optionsOfTheJob(options);
  SentJob job{0, printer.name, confirmable.size(), std::nullopt};
  job.number = sendJob(connection, printer, title, options, documents, progress);
  try {
    job.lost = lostOptions(connection, printer, job.number, confirmable);
  } catch (const Failure& failure) {
    job.unconfirmed = failure;
  }
  return job;
}

}  // namespace tandemtrim::host
