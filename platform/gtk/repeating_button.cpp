#include "platform/gtk/repeating_button.hpp"

#include <utility>

#include <glibmm/main.h>

#include "platform/gtk/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

constexpr unsigned kDelay = 400;
constexpr unsigned kInterval = 60;

}  // namespace

RepeatingButton::RepeatingButton(Gtk::Button& button, std::function<void()> action)
    : button_(button), action_(std::move(action)) {
  button.signal_state_flags_changed().connect(sigc::mem_fun(*this, &RepeatingButton::onStateChanged));
  button.signal_clicked().connect(sigc::mem_fun(*this, &RepeatingButton::onClicked));
}

// The button itself knows best for how long it is held.
bool RepeatingButton::isHeld() const {
  return (button_.get_state_flags() & Gtk::StateFlags::ACTIVE) == Gtk::StateFlags::ACTIVE;
}

void RepeatingButton::onStateChanged(Gtk::StateFlags before) {
  const bool wasHeld = (before & Gtk::StateFlags::ACTIVE) == Gtk::StateFlags::ACTIVE;
  if (wasHeld || !isHeld()) return;
  repeated_ = false;
  startTimer(kDelay);
}

// The click at the end of a hold adds no step to those that the hold made.
void RepeatingButton::onClicked() {
  timer_.disconnect();
  if (!std::exchange(repeated_, false)) guarded(action_);
}

void RepeatingButton::startTimer(unsigned milliseconds) {
  timer_.disconnect();
  timer_ = Glib::signal_timeout().connect(sigc::mem_fun(*this, &RepeatingButton::onTimeout), milliseconds);
}

bool RepeatingButton::onTimeout() {
  if (!isHeld()) return repeated_ = false;
  guarded(action_);
  if (std::exchange(repeated_, true)) return true;
  startTimer(kInterval);
  return false;
}

}  // namespace tandemtrim::platform::gtk
