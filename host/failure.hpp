#pragma once

#include <stdexcept>
#include <string>

namespace tandemtrim::host {

/// Exit statuses of the program.
inline constexpr int kSucceeded = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongCommandLine = 2;

/// What a failure is about, which decides what a user can do.
enum class Trouble {
  other,
  /// The message is complete, and in the language of the user.
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
      : std::runtime_error(message), exitStatus_(exitStatus), factLength_(message.size()) {}

  /// The message is the fact with the remedy behind it, which is for a user at a terminal.
  Failure(Trouble trouble, const std::string& fact, const std::string& remedy = "", int exitStatus = kFailed)
      : std::runtime_error(fact + remedy),
        exitStatus_(exitStatus),
        trouble_(trouble),
        factLength_(fact.size()) {}

  [[nodiscard]] int exitStatus() const noexcept { return exitStatus_; }
  [[nodiscard]] Trouble trouble() const noexcept { return trouble_; }
  [[nodiscard]] std::string fact() const { return std::string(what()).substr(0, factLength_); }
  [[nodiscard]] std::string remedy() const { return std::string(what()).substr(factLength_); }

 private:
  int exitStatus_ = kFailed;
  Trouble trouble_ = Trouble::other;
  // A text of its own could fail to be copied while the failure is raised.
  std::size_t factLength_;
};

/// A plug-in that is missing or does not do its part. A print job can do without the panel when the user
/// agrees.
class PluginFailure : public Failure {
 public:
  explicit PluginFailure(const std::string& message) : Failure(Trouble::plugin, message) {}
};

/// No dialog can be shown at all. Unless the user insists on it, the job goes on without one.
class NoDialog : public Failure {
 public:
  NoDialog(const std::string& fact, const std::string& remedy) : Failure(Trouble::other, fact, remedy) {}
};

}  // namespace tandemtrim::host
