#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cups/confirmation.hpp"
#include "host/cups/job.hpp"
#include "host/failure.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A job that the server has made.
struct SentJob {
  int number = 0;
  std::string printer;
  std::size_t options = 0;
  /// The server's report about the job; nullopt if it was not asked, since a document was not sent whole, or
  /// did not answer. `failure` is then set.
  std::optional<ReportedJob> reported = {};
  /// Why the job is not confirmed; nullopt if it is. With Trouble::lostSettings and
  /// Trouble::unconfirmedSettings the server has the whole job.
  std::optional<Failure> failure = {};
  /// The job's name in the queue.
  std::string title = {};
};

/// Whether the server has the whole job and prints it, even if not all its options are confirmed.
bool isAtServer(const SentJob& job);

/// How a job ended without being printed ("cancelled", "aborted", "stopped"); nullopt otherwise.
std::optional<std::string> badEnd(const ReportedJob& reported);

/// "job 17 on Morva: 7 of 7 options confirmed", or why they are not.
std::string jobText(const SentJob& job);

/// Why the job is not confirmed, judging by `job.reported`, which must be set; nullopt if it is confirmed.
/// Messages call the server `server`.
std::optional<Failure> objection(const SentJob& job, const std::string& server);

/// Sends the documents as one job with these options, asks the server what has arrived, and cancels the job
/// when it is incomplete. Failure when the server makes no job; later errors are in the job's `failure`.
SentJob sendAndConfirm(const Connection& connection, const Printer& printer, const std::string& title,
                       const Options& options, std::vector<Document>& documents, const Progress& progress);

/// Waits until a confirmed job has ended or its filter has failed. Updates the job and reports each change of
/// its state.
void waitForEnd(const Connection& connection, const Printer& printer, SentJob& job, const Report& report);

}  // namespace tandemtrim::host
