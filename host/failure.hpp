#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/fact.hpp"

namespace tandemtrim::host {

/// Exit statuses of the program.
inline constexpr int kSucceeded = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongCommandLine = 2;

/// What a failure is about, which decides what a user can do.
enum class Trouble {
  other,
  /// The fact says all, in words of the dialog.
  userMessage,
  /// The user called the job back.
  cancelled,
  plugin,
  noServer,
  unauthorized,
  notAllowed,
  insecure,
  noPrinter,
  noDefaultPrinter,
  rejecting,
  stopped,
  details,
  format,
  document,
  /// Of a job that may have been sent.
  unconfirmedJob,
  /// Of a job that was sent.
  unconfirmedSettings,
  lostSettings,
  notKeptForAllJobs,
  notRemembered
};

/// What makes the program fail: the message names the thing and what to do about it.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, int exitStatus = kFailed)
      : Failure(Trouble::other, message, "", exitStatus) {}

  /// The message is the fact with the remedy behind it, which is for a user at a terminal.
  Failure(Trouble trouble, Fact fact, const std::string& remedy = "", int exitStatus = kFailed)
      : std::runtime_error(fact.english() + remedy),
        exitStatus_(exitStatus),
        trouble_(trouble),
        fact_(std::make_shared<const Fact>(std::move(fact))) {}
  /// The same with words that a dialog does not translate.
  Failure(Trouble trouble, const std::string& words, const std::string& remedy = "", int exitStatus = kFailed)
      : Failure(trouble, Fact(words), remedy, exitStatus) {}

  [[nodiscard]] int exitStatus() const noexcept { return exitStatus_; }
  [[nodiscard]] Trouble trouble() const noexcept { return trouble_; }
  [[nodiscard]] const Fact& fact() const noexcept { return *fact_; }
  [[nodiscard]] std::string remedy() const { return std::string(what()).substr(fact_->english().size()); }

 private:
  int exitStatus_ = kFailed;
  Trouble trouble_ = Trouble::other;
  // A fact of its own could fail to be copied while the failure is raised.
  std::shared_ptr<const Fact> fact_;
};

/// A plug-in that is missing or does not do its part. A print job can do without the panel when the user
/// agrees.
class PluginFailure : public Failure {
 public:
  explicit PluginFailure(Fact fact) : Failure(Trouble::plugin, std::move(fact)) {}
};

/// No dialog can be shown at all. Unless the user insists on it, the job goes on without one.
class NoDialog : public Failure {
 public:
  NoDialog(const std::string& fact, const std::string& remedy) : Failure(Trouble::other, fact, remedy) {}
};

}  // namespace tandemtrim::host
