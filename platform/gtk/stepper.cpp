#include "platform/gtk/stepper.hpp"

#include <algorithm>

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollerscroll.h>

#include "platform/gtk/guarded.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::platform::gtk {

std::unique_ptr<Stepper> Stepper::make(Gtk::Box& box) {
  auto* lower = dynamic_cast<Gtk::Button*>(box.get_first_child());
  auto* upper = dynamic_cast<Gtk::Button*>(box.get_last_child());
  if (lower == nullptr || upper == nullptr) return nullptr;
  return std::unique_ptr<Stepper>(new Stepper(box, *lower, *upper));
}

Stepper::Stepper(Gtk::Box& box, Gtk::Button& lower, Gtk::Button& upper)
    : IdentifiedControlOf(box), lower_(lower, [this] { move(-1); }), upper_(upper, [this] { move(1); }) {}

std::string Stepper::stringValue() const { return Object(value_).stringValue(); }

void Stepper::setStringValue(std::string_view text) { value_ = static_cast<double>(integerValue(text)); }

void Stepper::setTextBox(TextBox* textBox) {
  textBox_ = textBox;
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(sigc::mem_fun(*this, &Stepper::onKey), false);
  textBox->widget().add_controller(keys);

  auto wheel = Gtk::EventControllerScroll::create();
  wheel->set_flags(Gtk::EventControllerScroll::Flags::VERTICAL | Gtk::EventControllerScroll::Flags::DISCRETE);
  wheel->signal_scroll().connect(sigc::mem_fun(*this, &Stepper::onWheel), false);
  textBox->widget().add_controller(wheel);
}

// Reading the box first has what was typed into it reach this stepper before it moves on from there.
void Stepper::move(int by) {
  if (textBox_ != nullptr) (void)textBox_->stringValue();
  value_ = std::max(min_, std::min(value_ + by, max_));
  if (textBox_ != nullptr) textBox_->setStringValue(stringValue());
}

bool Stepper::onKey(unsigned key, unsigned /*code*/, Gdk::ModifierType modifiers) {
  const auto kOthers = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK;
  const bool up = key == GDK_KEY_Up || key == GDK_KEY_KP_Up;
  const bool down = key == GDK_KEY_Down || key == GDK_KEY_KP_Down;
  if (!(up || down) || (modifiers & kOthers) != Gdk::ModifierType{} || textBox_->isComposing()) return false;
  guarded([&] { move(up ? 1 : -1); });
  return true;
}

bool Stepper::onWheel(double /*dx*/, double dy) {
  const auto flags = textBox_->widget().get_state_flags();
  if ((flags & Gtk::StateFlags::FOCUS_WITHIN) != Gtk::StateFlags::FOCUS_WITHIN || dy == 0) return false;
  guarded([&] { move(dy < 0 ? 1 : -1); });
  return true;
}

}  // namespace tandemtrim::platform::gtk
