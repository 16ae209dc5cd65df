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

  /// Asks, beginning with this name. `then` gets the name that the user gives, which a preset can have; it
  /// does not run where the user cancels.
  void ask(const std::string& name, std::function<void(const std::string&)> then);

 private:
  Gtk::Window& parent_;
  std::unique_ptr<Gtk::Dialog> window_;
  // Ends what waits for an answer along with this object.
  std::shared_ptr<void> alive_ = std::make_shared<int>(0);
};

}  // namespace tandemtrim::host
