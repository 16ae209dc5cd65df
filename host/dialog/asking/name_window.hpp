#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtkmm/dialog.h>

namespace tandemtrim::host {

/// A window before another one that asks for the name of a preset.
class NameWindow {
 public:
  explicit NameWindow(Gtk::Window& parent) : parent_(parent) {}

  struct Answer {
    /// One that a preset can have.
    std::string name;
    /// Whether the preset is to have the settings of the dialog's other pages, too.
    bool withPages = false;
  };

  /// Asks, beginning with this answer, for the name, and for the other pages where `asksForPages`. `then`
  /// does not run where the user cancels.
  void ask(const Answer& begin, bool asksForPages, std::function<void(const Answer&)> then);

 private:
  Gtk::Window& parent_;
  std::unique_ptr<Gtk::Dialog> window_;
  // Ends what waits for an answer along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
