#include "adapters/gtk/controls/repeating_button.hpp"

#include <utility>

#include "adapters/gtk/controls/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

constexpr unsigned kDelay = 400;
constexpr unsigned kInterval = 60;

}  // namespace

RepeatingButton::RepeatingButton(GtkWidget* button, std::function<void()> action)
    : button_(button), action_(std::move(action)) {
  g_signal_connect(button, "state-flags-changed", G_CALLBACK(&RepeatingButton::onStateChanged), this);
  g_signal_connect(button, "clicked", G_CALLBACK(&RepeatingButton::onClicked), this);
}

RepeatingButton::~RepeatingButton() {
  stopTimer();
  g_signal_handlers_disconnect_by_data(button_, this);
}

// The button itself knows best for how long it is held.
bool RepeatingButton::isHeld() const {
  return (gtk_widget_get_state_flags(button_) & GTK_STATE_FLAG_ACTIVE) != 0;
}

void RepeatingButton::onStateChanged(GtkWidget* /*button*/, GtkStateFlags before, RepeatingButton* self) {
  if ((before & GTK_STATE_FLAG_ACTIVE) != 0 || !self->isHeld()) return;
  self->repeated_ = false;
  self->startTimer(kDelay);
}

// The click at the end of a hold adds no step to those that the hold made.
void RepeatingButton::onClicked(GtkWidget* /*button*/, RepeatingButton* self) {
  self->stopTimer();
  if (!std::exchange(self->repeated_, false)) guarded(self->action_);
}

void RepeatingButton::startTimer(unsigned milliseconds) {
  stopTimer();
  timer_ = g_timeout_add(milliseconds, &RepeatingButton::onTimeout, this);
}

void RepeatingButton::stopTimer() {
  if (timer_ != 0) g_source_remove(std::exchange(timer_, 0));
}

gboolean RepeatingButton::onTimeout(gpointer repeatingButton) {
  auto* const self = static_cast<RepeatingButton*>(repeatingButton);
  if (self->isHeld()) {
    guarded(self->action_);
    if (std::exchange(self->repeated_, true)) return G_SOURCE_CONTINUE;
    self->startTimer(kInterval);
  } else {
    self->repeated_ = false;
    self->stopTimer();
  }
  return G_SOURCE_REMOVE;
}

}  // namespace tandemtrim::platform::gtk
