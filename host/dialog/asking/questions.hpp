#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtkmm/messagedialog.h>

#include "host/dialog/asking/message.hpp"

namespace tandemtrim::host {

/// Messages and questions in front of a window, one at a time; the window is blocked until one is answered.
class Questions {
 public:
  /// A button's title and its answer.
  using Answer = std::pair<Glib::ustring, int>;

  explicit Questions(Gtk::Window& parent) : parent_(parent) {}

  /// `then` runs when the message is closed.
  void showMessage(
      const std::string& message, std::function<void()> then = [] {});
  /// `then` is called with the chosen answer; Enter chooses `defaultAnswer`.
  void ask(const Message& message, const std::vector<Answer>& answers, int defaultAnswer,
           std::function<void(int)> then);

 private:
  Gtk::Window& parent_;
  std::unique_ptr<Gtk::MessageDialog> question_;
  // A question that waits for its answer ends together with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
