#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// A user's name and password for a print server.
struct Login {
  std::string user;
  std::string password;
};

/// A server's question for a login.
struct LoginQuestion {
  /// libcups's prompt, which names the user and the server.
  std::string prompt;
  std::string server;
  /// Whether the server rejected the last login.
  bool isRepeated = false;
};

/// Asks the user for a login; nullopt if there is no user to ask, or the user declines.
using AskForLogin = std::function<std::optional<Login>(const LoginQuestion&)>;

/// From now on libcups calls `ask` when a server requires a login on this thread, at most three times.
/// Deadlines pause while it asks. No login is written to disk.
void answerLogins(AskForLogin ask);

/// Whether the user answered the last question on this thread.
bool isLoginGiven() noexcept;

}  // namespace tandemtrim::host
