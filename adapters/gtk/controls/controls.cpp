#include "adapters/gtk/controls/controls.hpp"

#include "adapters/gtk/controls/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

// The style class by which a theme dims a text.
constexpr const char* kDimmed = "dim-label";

std::string directed(const Gtk::Widget& widget, std::string text) {
  constexpr const char* kRightToLeftMark = "\u200F";
  if (widget.get_direction() == Gtk::TextDirection::RTL) text.insert(0, kRightToLeftMark);
  return text;
}

}  // namespace

void TextLabel::setTextColor(Color color) {
  if (color == Color::lightGrayColor) {
    widget().add_css_class(kDimmed);
  } else {
    widget().remove_css_class(kDimmed);
  }
}

void TextLabel::setStringValue(std::string_view text) {
  ControlOf::setStringValue(text);
  widget().set_text(directed(widget(), std::string(text)));
}

// A screen reader speaks the title without the letter in parentheses.
void TextLabel::setAccessKey(char32_t letter) {
  const auto title = stringValue();
  widget().set_text_with_mnemonic(directed(widget(), marked(title, letter)));
  addKeyOf(letter, GTK_WIDGET(widget().gobj()));
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget().gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 title.c_str(), -1);
}

Button::Button(Gtk::Button& button) : TitledControlOf(button) {
  button.signal_clicked().connect(sigc::mem_fun(*this, &Button::onClicked));
}

void Button::onClicked() {
  guarded([this] {
    if (action_) action_(this);
  });
}

CheckBox::CheckBox(Gtk::CheckButton& button) : TitledControlOf(button) {
  toggled_ = button.signal_toggled().connect(sigc::mem_fun(*this, &CheckBox::onToggled));
}

int CheckBox::state() const {
  if (widget().get_inconsistent()) return kMixed;
  return widget().get_active() ? kOn : kOff;
}

// A mixed box is also not active, so that the user's click turns it on.
void CheckBox::setState(int state) {
  toggled_.block();
  widget().set_inconsistent(state == kMixed);
  widget().set_active(state == kOn);
  toggled_.unblock();
}

void CheckBox::onToggled() {
  widget().set_inconsistent(false);
  guarded([this] {
    if (action_) action_(this);
  });
}

}  // namespace tandemtrim::platform::gtk
