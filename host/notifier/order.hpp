#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// The texts of a notification, without markup.
struct NotificationText {
  std::string heading;
  std::string body;

  friend bool operator==(const NotificationText&, const NotificationText&) = default;
};

/// The notifications about a job, in the user's language.
struct NotifierOrder {
  /// nullopt means libcups's default server.
  std::optional<std::string> server;
  std::string printer;
  int job = 0;
  /// The notification that is shown at once, and those that replace it when the job ends without being
  /// printed.
  NotificationText sent;
  NotificationText cancelled;
  NotificationText failed;
  /// How long the job is watched.
  std::chrono::seconds watched{60};

  friend bool operator==(const NotifierOrder&, const NotifierOrder&) = default;
};

/// How long the session bus, the desktop and the print server may take to answer, in addition to the watch.
inline constexpr std::chrono::seconds kTimeForAnswers{45};

/// How long the notifier may take to carry out the order.
std::chrono::seconds longestTimeFor(const NotifierOrder& order);

/// The order as JSON, which the notifier gets on its standard input.
std::string orderText(const NotifierOrder& order);

/// The order in this text. Failure when the text is not an order.
NotifierOrder orderFrom(const std::string& text);

}  // namespace tandemtrim::host
