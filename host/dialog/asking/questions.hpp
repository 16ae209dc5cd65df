#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtkmm/messagedialog.h>

namespace tandemtrim::host {

/// Messages and questions before a window, one at a time; until one is answered, the window is blocked.
class Questions {
 public:
  /// A button's title and what it answers.
  using Answer = std::pair<Glib::ustring, int>;

  explicit Questions(Gtk::Window& parent) : parent_(parent) {}

  /// `then` runs when the message is closed.
  void showWarning(
      const Glib::ustring& message, std::function<void()> then = [] {});
  void showInformation(const Glib::ustring& message);
  /// The last answer is the default. `then` runs with the chosen one.
  void ask(const Glib::ustring& message, const std::vector<Answer>& answers, std::function<void(int)> then);

 private:
  void show(const Glib::ustring& message, Gtk::MessageType type, const std::vector<Answer>& answers,
            std::function<void(int)> then);

  Gtk::Window& parent_;
  std::unique_ptr<Gtk::MessageDialog> question_;
  // Ends what waits for an answer along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
