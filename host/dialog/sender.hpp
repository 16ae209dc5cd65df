#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/dialog/asking/background.hpp"
#include "host/dialog/file/saved_file.hpp"
#include "host/dialog/print_request.hpp"
#include "host/job/documents.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Sends documents in the background, one job at a time, and remembers the settings of a job that was sent;
/// or saves a document to a file.
class Sender {
 public:
  using Done = std::function<void(const Outcome<SendResult>&)>;

  /// Shows a line on how much of a document is sent, and the share that is sent; nullopt if it is not known.
  using ShowProgress = std::function<void(const std::string&, std::optional<double>)>;

  /// `documents` may be empty until take() is called. `ask` answers a server that requires a login.
  Sender(std::vector<Document> documents, Report report, AskForLogin ask, ShowProgress showProgress);

  [[nodiscard]] bool hasDocument() const { return !documents_->empty(); }
  /// Opens the only document again to show its pages; the result is not open when there are several
  /// documents, or it is not a PDF file.
  [[nodiscard]] FileDescriptor openPages() const;
  /// Replaces the documents by this one.
  void take(Document document);
  /// `done` gets the result or the failure. Failures are reported, too, unless the job was cancelled.
  void send(const PrintRequest& request, Done done);
  /// The same for saving the only document.
  void save(const FileTarget& target, std::function<void(const Outcome<SavedFile>&)> done);
  /// Cancels the job that is being sent, for this reason; `done` is still called when the server has
  /// answered.
  void cancel(const char* reason) { *cancelled_ = reason; }

 private:
  void reportFailure(const std::optional<Failure>& failure) const;
  [[nodiscard]] Progress makeProgress() const;
  void finish(const PrintRequest& request, Outcome<SendResult>& outcome) const;

  // Shared with the work in the background, which may outlive the dialog.
  std::shared_ptr<std::vector<Document>> documents_;
  Report report_;
  AskForLogin ask_;
  ShowProgress showProgress_;
  // Why the job is cancelled; null while it is not.
  std::shared_ptr<std::atomic<const char*>> cancelled_;
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
