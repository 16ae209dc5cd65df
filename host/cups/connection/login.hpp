#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// By what a user proves who they are to a print server.
struct Login {
  std::string user;
  std::string password;
};

/// A server's question for a login.
struct LoginQuestion {
  /// In libcups's words, with the user and the server.
  std::string prompt;
  std::string server;
  /// Whether the server did not take the last login.
  bool isRepeated = false;
};

/// Asks the user for a login; none when nobody is there to ask, or the user gives none.
using AskForLogin = std::function<std::optional<Login>(const LoginQuestion&)>;

/// From now on libcups gets the logins that servers want on this thread from `ask`, three in all. No
/// request's deadline runs meanwhile. Nothing is kept beyond the connection.
void answerLogins(AskForLogin ask);

/// Whether the last question on this thread was answered.
bool isLoginGiven() noexcept;

}  // namespace tandemtrim::host
