#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cups/job.hpp"
#include "host/cups/sent_job.hpp"
#include "host/dialog/settings/remembered.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/job/options.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A job as the user set it up in the dialog.
struct PrintRequest {
  std::optional<std::string> server;
  /// As findPrinter() takes it.
  std::string printer;
  /// None is the name of the first document.
  std::optional<std::string> title;
  Options options;
  /// What the next job on the printer starts from.
  Remembered remembered;
  /// Whether the panel's options become the user's defaults for the printer, too.
  bool useForAllJobs = false;
  /// The keywords of options that are never kept for other jobs.
  std::vector<std::string> notKept;
};

struct SendResult {
  SentJob job;
  /// What went wrong once the job was sent.
  std::vector<Failure> problems;
};

/// Sends the job and asks the server which of its options it holds. Failure when the server, the printer or a
/// document refuses; a stopped printer refuses too, since the user can choose another. `progress` is called
/// once before there is a job, with its title. Settings that cannot be kept for all jobs are reported, too.
SendResult sendRequest(const PrintRequest& request, std::vector<Document>& documents,
                       const Progress& progress, const Report& report);

}  // namespace tandemtrim::host
