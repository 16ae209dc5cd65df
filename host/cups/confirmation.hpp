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

/// What a job was sent with.
struct JobContent {
  Options options;
  std::size_t documents = 0;
  /// Of all documents.
  std::uint64_t bytes = 0;
  /// Whether the server said of each document that it has it.
  bool isAnswered = true;
};

/// An option that the server does not hold as it was sent.
struct LostOption {
  std::string keyword;
  std::string sent;
  /// None where the server does not hold it at all.
  std::optional<std::string> held;
};

/// What the server says of a job.
struct HeldJob {
  ipp_jstate_t state = IPP_JSTATE_PENDING;
  /// Keywords of the protocol, as "job-canceled-by-user"; empty when there is nothing to say.
  std::string reasons;
  /// What the printer says while it works on the job; often empty.
  std::string message;
  /// How many sheets are printed; 0 also when the server does not count.
  std::uint64_t sheets = 0;
  /// What of the documents it does not hold, as "0 of 1 documents"; empty when it has them all.
  std::string incomplete;
  std::vector<LostOption> lost;
  /// Whether more of the documents may still be on its way: one that the server has taken never grows.
  bool isArriving = false;
};

/// Those of the options that a server keeps as attributes of the job: not those of a subscription to its
/// events, nor another name for its title.
Options optionsOfTheJob(const Options& options);

/// Asks the server what it holds of a job; none when it does not know the job or its answer is about
/// something else. Failure when there is no answer.
std::optional<HeldJob> askForJob(const Connection& connection, const Printer& printer, int job,
                                 const JobContent& sent);

/// The same for the attributes of a job that the server has answered with.
HeldJob heldJob(const MessageHandle& jobAttributes, const JobContent& sent);

}  // namespace tandemtrim::host
