#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <gtkmm/dialog.h>

#include "host/cups/connection/login.hpp"

namespace tandemtrim::host {

/// Asks the user for a user name and a password in front of a window, while a thread waits for them. Neither
/// is stored.
class LoginWindow {
 public:
  /// Questions are shown only while `mayAsk`, on the main loop, says so.
  LoginWindow(Gtk::Window& parent, std::function<bool()> mayAsk)
      : parent_(parent), mayAsk_(std::move(mayAsk)) {}
  LoginWindow(const LoginWindow&) = delete;
  LoginWindow& operator=(const LoginWindow&) = delete;
  ~LoginWindow() { giveUp(); }

  /// Returns a function by which a thread asks and waits for the answer; that function returns nullopt
  /// while no question may be shown, and once this object is gone.
  [[nodiscard]] AskForLogin ask();
  /// Cancels the question that is being asked, if any.
  void giveUp();

 private:
  struct Answer;

  static std::optional<Login> waitForAnswer(LoginWindow* window, const std::weak_ptr<void>& alive,
                                            const LoginQuestion& question);
  void show(const LoginQuestion& question, std::shared_ptr<Answer> answer);
  void finish(const std::optional<Login>& login);

  Gtk::Window& parent_;
  const std::function<bool()> mayAsk_;
  std::unique_ptr<Gtk::Dialog> window_;
  // For the thread that waits; null while no thread does.
  std::shared_ptr<Answer> answer_;
  // Questions that still wait for the main loop end together with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
