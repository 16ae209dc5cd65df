#pragma once

#include <memory>

#include <gtkmm/dialog.h>

#include "host/cups/connection/login.hpp"

namespace tandemtrim::host {

/// Asks the user for a user name and a password before a window, while a thread waits for them. Neither is
/// kept.
class LoginWindow {
 public:
  explicit LoginWindow(Gtk::Window& parent) : parent_(parent) {}
  LoginWindow(const LoginWindow&) = delete;
  LoginWindow& operator=(const LoginWindow&) = delete;
  ~LoginWindow() { giveUp(); }

  /// Asks from a thread, which waits for the answer; nobody answers once this object is gone.
  [[nodiscard]] AskForLogin ask();
  /// Gives up the question that is asked, if there is one, as Cancel does.
  void giveUp();

 private:
  struct Answer;

  static std::optional<Login> waitForAnswer(LoginWindow* window, const std::weak_ptr<void>& alive,
                                            const LoginQuestion& question);
  void show(const LoginQuestion& question, std::shared_ptr<Answer> answer);
  void finish(const std::optional<Login>& login);

  Gtk::Window& parent_;
  std::unique_ptr<Gtk::Dialog> window_;
  // Of the thread that waits; null while none does.
  std::shared_ptr<Answer> answer_;
  // Ends questions that wait for the main loop along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
