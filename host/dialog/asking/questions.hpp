#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtkmm/messagedialog.h>

namespace tandemtrim::host {

/// Messages and questions before a window, one at a time; until one is answered, the window is blocked.
class Questions {
 public:
  /// A button's title and what it answers.
  using Answer = std::pair<Glib::ustring, int>;
  /// What is said at first, and the sentences below it.
  struct Message {
    std::string heading;
    std::vector<std::string> sentences = {};
  };

  explicit Questions(Gtk::Window& parent) : parent_(parent) {}

  /// The first line of the message is its heading. `then` runs when the message is closed.
  void showMessage(
      const Glib::ustring& message, std::function<void()> then = [] {});
  /// `then` runs with the chosen answer; Enter gives the usual one.
  void ask(const Message& message, const std::vector<Answer>& answers, int usual,
           std::function<void(int)> then);

 private:
  Gtk::Window& parent_;
  std::unique_ptr<Gtk::MessageDialog> question_;
  // Ends what waits for an answer along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
