#include "platform/gtk/repeating_button.hpp"

#include <utility>

#include <glibmm/main.h>
#include <gtkmm/gestureclick.h>

#include "platform/gtk/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

constexpr unsigned kDelay = 400;
constexpr unsigned kInterval = 60;

}  // namespace

RepeatingButton::RepeatingButton(Gtk::Button& button, std::function<void()> action)
    : button_(button), action_(std::move(action)) {
  auto press = Gtk::GestureClick::create();
  press->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  press->signal_pressed().connect(sigc::mem_fun(*this, &RepeatingButton::onPressed));
  button.add_controller(press);
  button.signal_clicked().connect(sigc::mem_fun(*this, &RepeatingButton::onClicked));
}

void RepeatingButton::onPressed(int /*presses*/, double /*x*/, double /*y*/) {
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

// The button itself knows best for how long it is held.
bool RepeatingButton::onTimeout() {
  const bool held = (button_.get_state_flags() & Gtk::StateFlags::ACTIVE) == Gtk::StateFlags::ACTIVE;
  if (!held) return repeated_ = false;
  guarded(action_);
  if (std::exchange(repeated_, true)) return true;
  startTimer(kInterval);
  return false;
}

}  // namespace tandemtrim::platform::gtk
