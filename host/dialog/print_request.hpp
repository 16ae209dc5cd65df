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
  /// In the form that findPrinter() takes.
  std::string printer;
  /// nullopt means the name of the first document.
  std::optional<std::string> title;
  Options options;
  /// The settings that the next job on the printer starts from.
  Remembered remembered;
  /// Whether the options replace the user's defaults for the printer, except those that concern a single job.
  bool useForAllJobs = false;
  /// The keywords of options whose defaults stay as they are.
  std::vector<std::string> notKept;
};

struct SendResult {
  SentJob job;
  /// What failed after the job was sent.
  std::vector<Failure> problems;
};

/// Sends the job and confirms its options. Failure when the server or the printer refuses it, or a document
/// cannot be sent; a stopped printer counts as refusing, since the user can choose another. `progress` is
/// called once before there is a job, with the job's title. Settings that cannot be kept for all jobs are
/// reported, too.
SendResult sendRequest(const PrintRequest& request, std::vector<Document>& documents,
                       const Progress& progress, const Report& report);

}  // namespace tandemtrim::host
