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
  /// The fact is one of the dialog's own messages and needs no addition.
  userMessage,
  /// The user cancelled the job.
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
  /// A job may have been sent.
  unconfirmedJob,
  /// The job was sent.
  unconfirmedSettings,
  lostSettings,
  notKeptForAllJobs,
  notRemembered
};

/// An error: the message names the thing, the fact and what to do about it.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, int exitStatus = kFailed)
      : Failure(Trouble::other, message, "", exitStatus) {}

  /// The message is the fact, followed by the remedy, which is for a user at a terminal.
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
  // Shared, because copying a fact could throw while the failure is thrown.
  std::shared_ptr<const Fact> fact_;
};

/// A plug-in that is missing or fails. The job can be printed without the panel when the user agrees.
class PluginFailure : public Failure {
 public:
  explicit PluginFailure(Fact fact) : Failure(Trouble::plugin, std::move(fact)) {}
};

/// No dialog can be shown. Unless the user requires it, the job is printed without one.
class NoDialog : public Failure {
 public:
  NoDialog(const std::string& fact, const std::string& remedy) : Failure(Trouble::other, fact, remedy) {}
};

}  // namespace tandemtrim::host
