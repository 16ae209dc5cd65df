#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cups/job.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {

/// A job that the server has.
struct SentJob {
  int number = 0;
  std::string printer;
  std::size_t options = 0;
  /// The keywords that the server does not hold as they were sent; none when it could not tell.
  std::optional<std::vector<std::string>> lost;
  /// Why the server could not be asked; none when it was.
  std::optional<Failure> unconfirmed = {};
};

/// "job 17 on Morva: 7 of 7 options confirmed", with the lost ones named behind it.
std::string jobText(const SentJob& job);

/// Sends the documents as sendJob() does, then asks the server which of the options it holds. Failure when
/// the server refuses the job; a question about a job that was sent is `unconfirmed` where it fails.
SentJob sendAndConfirm(const Connection& connection, const Printer& printer, const std::string& title,
                       const Options& options, std::vector<Document>& documents, const Progress& progress);

}  // namespace tandemtrim::host
