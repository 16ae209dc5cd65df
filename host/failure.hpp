#pragma once

#include <stdexcept>
#include <string>

namespace tandemtrim::host {

/// Exit statuses of the program.
inline constexpr int kSucceeded = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongCommandLine = 2;

/// What stops the program before anything is sent: the message names the thing and what to do about it.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, int exitStatus = kFailed)
      : std::runtime_error(message), exitStatus_(exitStatus) {}

  [[nodiscard]] int exitStatus() const noexcept { return exitStatus_; }

 private:
  int exitStatus_;
};

/// A plug-in that is missing or does not do its part. A print job can do without the panel when the person
/// agrees.
class PluginFailure : public Failure {
 public:
  using Failure::Failure;
};

}  // namespace tandemtrim::host
