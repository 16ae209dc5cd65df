#include "adapters/gtk/controls/stepper.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "adapters/gtk/controls/guarded.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::gtk {
namespace {

constexpr double kStep = 1;
constexpr double kPage = 10;

// Keeps the toolkit from writing its number into the text; onStep() writes it.
gboolean onOutput(GtkSpinButton* /*spinButton*/, gpointer /*data*/) { return TRUE; }

gboolean onWheel(GtkEventController* wheel, double /*dx*/, double dy, gpointer /*data*/) {
  auto* const spinButton = gtk_event_controller_get_widget(wheel);
  if ((gtk_widget_get_state_flags(spinButton) & GTK_STATE_FLAG_FOCUS_WITHIN) == 0 || dy == 0) return FALSE;
  gtk_spin_button_update(GTK_SPIN_BUTTON(spinButton));
  gtk_spin_button_spin(GTK_SPIN_BUTTON(spinButton), dy < 0 ? GTK_SPIN_STEP_FORWARD : GTK_SPIN_STEP_BACKWARD,
                       kStep);
  return TRUE;
}

}  // namespace

Stepper::Stepper(Glib::RefPtr<Gtk::Adjustment> range) : range_(std::move(range)) {
  range_->signal_value_changed().connect(sigc::mem_fun(*this, &Stepper::onStep));
  show();
}

// The widget may outlive the stepper; the text box may be destroyed before the stepper.
Stepper::~Stepper() {
  if (spinButton_ == nullptr) return;
  g_signal_handlers_disconnect_by_data(spinButton_->gobj(), this);
  gtk_widget_remove_controller(GTK_WIDGET(spinButton_->gobj()), wheel_);
}

void Stepper::setEnabled(bool enabled) {
  if (textBox_ != nullptr) textBox_->setEnabled(enabled);
}

void Stepper::setMinValue(double value) {
  min_ = value;
  show();
}

void Stepper::setMaxValue(double value) {
  max_ = value;
  show();
}

std::string Stepper::stringValue() const { return Object(value_).stringValue(); }

void Stepper::setStringValue(std::string_view text) {
  value_ = static_cast<double>(integerValue(text));
  show();
}

void Stepper::setTextBox(TextBox* textBox) {
  textBox_ = textBox;
  spinButton_ = &textBox->widget();
  auto* const spinButton = spinButton_->gobj();
  g_signal_connect(spinButton, "input", G_CALLBACK(&Stepper::onInput), this);
  g_signal_connect(spinButton, "output", G_CALLBACK(&onOutput), this);
  g_signal_connect(spinButton, "change-value", G_CALLBACK(&Stepper::onKey), this);
  takeWheelOver();
  show();
}

// The toolkit clamps a value to its range. For a value beyond the bounds the range is wider, so that a step
// in either direction is possible.
void Stepper::show() {
  const auto lower = std::min(min_, value_ < min_ ? value_ - kStep : min_);
  const auto upper = std::max({min_, max_, value_ > max_ ? value_ + kStep : max_});
  showing_ = true;
  range_->configure(value_, lower, upper, kStep, kPage, 0);
  showing_ = false;
  if (textBox_ == nullptr) return;
  gtk_accessible_update_property(GTK_ACCESSIBLE(spinButton_->gobj()), GTK_ACCESSIBLE_PROPERTY_VALUE_MIN, min_,
                                 GTK_ACCESSIBLE_PROPERTY_VALUE_MAX, max_, -1);
}

// The toolkit calls onInput() first, so the step starts from a number that the user has just typed.
void Stepper::onStep() {
  if (showing_) return;
  guarded([this] {
    value_ = std::max(min_, std::min(std::round(range_->get_value()), max_));
    show();
    if (textBox_ != nullptr) textBox_->step(stringValue());
  });
}

// The toolkit calls this before each step, and when the focus leaves, to get the number in the text.
int Stepper::onInput(GtkSpinButton* /*spinButton*/, double* value, Stepper* self) {
  guarded([&] { self->textBox_->flush(); });
  *value = self->range_->get_value();
  return TRUE;
}

void Stepper::onKey(GtkSpinButton* spinButton, GtkScrollType /*step*/, Stepper* self) {
  if (self->textBox_->isComposing()) g_signal_stop_emission_by_name(spinButton, "change-value");
}

// The toolkit's own wheel works without the focus, so that scrolling the page would change numbers.
void Stepper::takeWheelOver() {
  auto* const spinButton = GTK_WIDGET(spinButton_->gobj());
  auto* const controllers = gtk_widget_observe_controllers(spinButton);
  for (guint index = 0; index < g_list_model_get_n_items(controllers); ++index) {
    auto* const controller = GTK_EVENT_CONTROLLER(g_list_model_get_item(controllers, index));
    if (GTK_IS_EVENT_CONTROLLER_SCROLL(controller))
      gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_NONE);
    g_object_unref(controller);
  }
  g_object_unref(controllers);

  constexpr auto kNotches = GTK_EVENT_CONTROLLER_SCROLL_VERTICAL | GTK_EVENT_CONTROLLER_SCROLL_DISCRETE;
  wheel_ = gtk_event_controller_scroll_new(static_cast<GtkEventControllerScrollFlags>(kNotches));
  g_signal_connect(wheel_, "scroll", G_CALLBACK(&onWheel), nullptr);
  gtk_widget_add_controller(spinButton, wheel_);
}

}  // namespace tandemtrim::platform::gtk
