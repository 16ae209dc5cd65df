#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/cups/job.hpp"
#include "host/cups/sent_job.hpp"
#include "host/dialog/settings/remembered.hpp"
#include "host/failure.hpp"
#include "host/job/documents.hpp"
#include "host/job/options.hpp"
#include "host/note.hpp"

namespace tandemtrim::host {

/// A job as the person ordered it at the dialog.
struct Order {
  std::optional<std::string> server;
  /// As findPrinter() takes it.
  std::string printer;
  std::string title;
  std::shared_ptr<std::vector<Document>> documents;
  Options options;
  /// What the next job on the printer starts from.
  Remembered remembered;
  /// Whether the panel's options become the person's defaults for the printer, too.
  bool useForAllJobs = false;
};

/// What came of an order.
struct Delivery {
  SentJob job;
  /// What went wrong once the job was sent.
  std::vector<Failure> shortcomings;
};

/// Sends the job and asks the server what it holds of it. Failure when the server, the printer or a document
/// refuses; a stopped printer refuses too, since the person is there to choose another. `progress` is asked
/// once before there is a job. That settings are not kept for all jobs is noted, too.
Delivery carryOut(const Order& order, const Progress& progress, const Note& note);

}  // namespace tandemtrim::host
