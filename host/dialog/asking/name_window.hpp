#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtkmm/dialog.h>

namespace tandemtrim::host {

/// A window in front of another one that asks for the name of a preset.
class NameWindow {
 public:
  explicit NameWindow(Gtk::Window& parent) : parent_(parent) {}

  struct Answer {
    /// A name that a preset can have.
    std::string name;
    /// Whether the preset also gets the settings of the dialog's other pages.
    bool withPages = false;
  };

  /// Asks for the name and, if `asksForPages`, for `withPages`; `begin` is shown at first. `then` is not
  /// called when the user cancels.
  void ask(const Answer& begin, bool asksForPages, std::function<void(const Answer&)> then);

 private:
  Gtk::Window& parent_;
  std::unique_ptr<Gtk::Dialog> window_;
  // A question that waits for its answer ends together with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
