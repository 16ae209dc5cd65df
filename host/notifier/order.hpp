#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// What a notification says, as plain text.
struct NotificationText {
  std::string heading;
  std::string body;

  friend bool operator==(const NotificationText&, const NotificationText&) = default;
};

/// What the notifier is to say of a job, in the user's language.
struct NotifierOrder {
  /// None is the server that libcups would choose.
  std::optional<std::string> server;
  std::string printer;
  int job = 0;
  /// What is said at once, and what takes its place when the job ends without being printed.
  NotificationText sent;
  NotificationText cancelled;
  NotificationText failed;
  /// For how long the job is watched.
  std::chrono::seconds watched{60};

  friend bool operator==(const NotifierOrder&, const NotifierOrder&) = default;
};

/// The order as JSON, which the notifier gets on its standard input.
std::string orderText(const NotifierOrder& order);

/// The order in this text. Failure when it is none.
NotifierOrder orderFrom(const std::string& text);

}  // namespace tandemtrim::host
