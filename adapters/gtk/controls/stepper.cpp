#include "adapters/gtk/controls/stepper.hpp"

#include <algorithm>

#include "adapters/gtk/controls/guarded.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::gtk {

std::unique_ptr<Stepper> Stepper::make(Gtk::Box& box) {
  auto* const lower = gtk_widget_get_first_child(GTK_WIDGET(box.gobj()));
  auto* const upper = gtk_widget_get_last_child(GTK_WIDGET(box.gobj()));
  if (!GTK_IS_BUTTON(lower) || !GTK_IS_BUTTON(upper)) return nullptr;
  return std::unique_ptr<Stepper>(new Stepper(box, lower, upper));
}

Stepper::Stepper(Gtk::Box& box, GtkWidget* lower, GtkWidget* upper)
    : IdentifiedControlOf(box), lower_(lower, [this] { move(-1); }), upper_(upper, [this] { move(1); }) {}

// The text box's widget may outlive it.
Stepper::~Stepper() {
  for (auto* controller : {keys_, wheel_}) {
    if (controller != nullptr)
      gtk_widget_remove_controller(gtk_event_controller_get_widget(controller), controller);
  }
}

std::string Stepper::stringValue() const { return Object(value_).stringValue(); }

void Stepper::setStringValue(std::string_view text) { value_ = static_cast<double>(integerValue(text)); }

void Stepper::setTextBox(TextBox* textBox) {
  textBox_ = textBox;
  auto* const entry = GTK_WIDGET(textBox->widget().gobj());
  keys_ = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(keys_, GTK_PHASE_CAPTURE);
  g_signal_connect(keys_, "key-pressed", G_CALLBACK(&Stepper::onKey), this);
  gtk_widget_add_controller(entry, keys_);

  constexpr auto kNotches = GTK_EVENT_CONTROLLER_SCROLL_VERTICAL | GTK_EVENT_CONTROLLER_SCROLL_DISCRETE;
  wheel_ = gtk_event_controller_scroll_new(static_cast<GtkEventControllerScrollFlags>(kNotches));
  g_signal_connect(wheel_, "scroll", G_CALLBACK(&Stepper::onWheel), this);
  gtk_widget_add_controller(entry, wheel_);
}

// A number that was typed into the box reaches this stepper before it moves on from there.
void Stepper::move(int by) {
  if (textBox_ != nullptr) textBox_->flush();
  value_ = std::max(min_, std::min(value_ + by, max_));
  if (textBox_ != nullptr) textBox_->setStringValue(stringValue());
}

gboolean Stepper::onKey(GtkEventControllerKey* /*keys*/, guint key, guint /*code*/, GdkModifierType modifiers,
                        Stepper* self) {
  const bool up = key == GDK_KEY_Up || key == GDK_KEY_KP_Up;
  const bool down = key == GDK_KEY_Down || key == GDK_KEY_KP_Down;
  const bool withOthers = (modifiers & (GDK_CONTROL_MASK | GDK_ALT_MASK)) != 0;
  if (!(up || down) || withOthers || self->textBox_->isComposing()) return FALSE;
  guarded([&] { self->move(up ? 1 : -1); });
  return TRUE;
}

gboolean Stepper::onWheel(GtkEventControllerScroll* wheel, double /*dx*/, double dy, Stepper* self) {
  auto* const entry = gtk_event_controller_get_widget(GTK_EVENT_CONTROLLER(wheel));
  if ((gtk_widget_get_state_flags(entry) & GTK_STATE_FLAG_FOCUS_WITHIN) == 0 || dy == 0) return FALSE;
  guarded([&] { self->move(dy < 0 ? 1 : -1); });
  return TRUE;
}

}  // namespace tandemtrim::platform::gtk
