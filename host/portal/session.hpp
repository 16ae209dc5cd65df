#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "host/dialog/application_dialog.hpp"
#include "host/portal/document_copy.hpp"
#include "host/portal/main_loop.hpp"
#include "host/portal/request.hpp"

namespace tandemtrim::host {

/// One print operation of a program, from its first request until the dialog's end.
class Session {
 public:
  struct Surroundings {
    std::function<OpenedDialog(const DialogRequest&, FileDescriptor, ApplicationDialog::Events)> open;
    /// Issues a token by which the program returns to this session.
    std::function<std::uint32_t()> issueToken;
    /// How long the user's choice is valid; for a later document the dialog asks again.
    std::chrono::seconds lifeOfToken;
    Report report;
    /// Called when nothing is left to do; the session may be destroyed once this returns.
    std::function<void()> onEnd;
  };

  explicit Session(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Shows the dialog and answers with the user's choice and a token.
  void prepare(std::unique_ptr<Request> request, const DialogRequest& asked);
  /// Prints the document: as the user chose, or as the user chooses in a dialog for this document.
  void print(std::unique_ptr<Request> request, const DialogRequest& asked, FileDescriptor document);
  /// The program's request, answered or not; null when there is none.
  [[nodiscard]] const Request* request() const { return request_.get(); }
  /// Whether the user has chosen and there is no document yet.
  [[nodiscard]] bool waitsForDocument() const { return timeKept_ != nullptr; }
  /// Called when the program cancels its request or ends.
  void leave();

 private:
  // Runs `act`. Its exception is reported and ends the session: else the program would wait forever.
  void guarded(const std::function<void()>& act);
  // Makes the dialog; returns the failure when that is impossible.
  std::optional<Failure> open(const DialogRequest& asked, FileDescriptor document);
  // Sends the user's choice to the program.
  void answerChoice();
  void onDialogEnd(DialogEnd end);
  void onCopied(const DialogRequest& asked, FileDescriptor document, const std::optional<Failure>& failure);
  void fail(const DialogRequest& asked, const Failure& failure);
  void end(Response response);

  const Surroundings surroundings_;
  std::unique_ptr<ApplicationDialog> dialog_;
  std::unique_ptr<DocumentCopy> copy_;
  // Null before the first one, and between the user's choice and the document.
  std::unique_ptr<Request> request_;
  // Runs from the user's choice to the program's document.
  std::unique_ptr<Timer> timeKept_;
  std::chrono::steady_clock::time_point chosenAt_;
  bool isChoiceOld_ = false;
};

}  // namespace tandemtrim::host
