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
/// or saves one to a file.
class Sender {
 public:
  using Done = std::function<void(const Outcome<SendResult>&)>;

  /// A line on how much of a document is sent, and its share of the whole; none where that is not known.
  using ShowProgress = std::function<void(const std::string&, std::optional<double>)>;

  /// Without documents until there is one. A server that wants a login gets it from `ask`.
  Sender(std::vector<Document> documents, Report report, AskForLogin ask, ShowProgress showProgress);

  [[nodiscard]] bool hasDocument() const { return !documents_->empty(); }
  /// The document, the only one, opened once more to look at its pages; not open where it has none that can
  /// be looked at.
  [[nodiscard]] FileDescriptor openPages() const;
  /// Sends or saves this document from now on.
  void take(Document document);
  /// `done` gets the result or the failure. Failures are reported, too, unless the job was cancelled.
  void send(const PrintRequest& request, Done done);
  /// The same for saving the document, the only one.
  void save(const FileTarget& target, std::function<void(const Outcome<SavedFile>&)> done);
  /// Cancels the job that is being sent, for this reason; `done` is called when the server has answered, even
  /// so.
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
