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
  /// What the server says of it; none when it could not be asked or says nothing, which is a failure.
  std::optional<HeldJob> held = {};
  /// Why the job is not confirmed; none when it is. Trouble::lostSettings and Trouble::unconfirmedSettings
  /// are of a job that the server has whole.
  std::optional<Failure> failure = {};
  /// The name that the queue shows.
  std::string title = {};
};

/// Whether the server has the job whole and prints it, even where not all of it is confirmed.
bool isAtServer(const SentJob& job);

/// How a job has ended without being printed ("cancelled", "aborted", "stopped"); none when it has not.
std::optional<std::string> badEnd(const HeldJob& held);

/// "job 17 on Morva: 7 of 7 options confirmed", or why they are not.
std::string jobText(const SentJob& job);

/// Why a job is not confirmed that this server holds so; none when it is confirmed.
std::optional<Failure> objection(const SentJob& job, const std::string& server);

/// Sends the documents as one job with these options, then asks the server what it holds of it, and cancels
/// what is incomplete. Failure when the server makes no job; what fails later is the job's failure.
SentJob sendAndConfirm(const Connection& connection, const Printer& printer, const std::string& title,
                       const Options& options, std::vector<Document>& documents, const Progress& progress);

/// Waits until a confirmed job has ended or its filter has failed, and updates it. Each change of its state
/// is reported.
void waitForEnd(const Connection& connection, const Printer& printer, SentJob& job, const Report& report);

}  // namespace tandemtrim::host
