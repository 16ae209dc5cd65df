#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/cups/connection/connection.hpp"
#include "host/cups/connection/cups_handles.hpp"
#include "host/cups/printer.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The content of a job as it was sent.
struct JobContent {
  Options options;
  std::size_t documents = 0;
  /// Of all documents together.
  std::uint64_t bytes = 0;
  /// Whether the server confirmed every document.
  bool isAnswered = true;
};

/// An option that the job at the server lacks, or has with another value.
struct LostOption {
  std::string keyword;
  std::string sent;
  /// The value at the server; nullopt if the job lacks the option.
  std::optional<std::string> atServer;
};

/// The server's report about a job.
struct ReportedJob {
  ipp_jstate_t state = IPP_JSTATE_PENDING;
  /// IPP's keywords, such as "job-canceled-by-user", with commas between them; often empty.
  std::string reasons;
  /// The printer's message while it works on the job; often empty.
  std::string message;
  /// How many sheets are printed; 0 also when the server does not count.
  std::uint64_t sheets = 0;
  /// How much of the documents the server has, such as "0 of 1 documents"; empty when it has them all.
  std::string incomplete;
  std::vector<LostOption> lost;
  /// Whether the missing part may still arrive. A document that the server has accepted never grows.
  bool isArriving = false;
};

/// The options that a server keeps as attributes of the job: all but job-name, which is the job's title, and
/// those of a subscription to the job's events.
Options optionsOfTheJob(const Options& options);

/// Asks the server about a job; nullopt if it does not know the job or its answer is about something else.
/// Failure when there is no answer, or it is an error.
std::optional<ReportedJob> askForJob(const Connection& connection, const Printer& printer, int job,
                                     const JobContent& sent);

/// The names of the job's attributes that its report is made from.
std::vector<std::string> attributesToAsk(const JobContent& sent);

/// Reads the same from the job's attributes in the server's answer.
ReportedJob reportedJob(const MessageHandle& jobAttributes, const JobContent& sent);

}  // namespace tandemtrim::host
