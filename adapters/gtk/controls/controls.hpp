#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>

#include "adapters/gtk/controls/access_key.hpp"
#include "adapters/gtk/controls/control.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// A label. In a right-to-left panel its text has that direction, too, regardless of its first letter.
class TextLabel : public ControlOf<MorvaTTTextLabelKV2, Gtk::Label>, public AccessKeyed {
 public:
  using ControlOf::ControlOf;

  void setTextColor(Color color) override;
  void setStringValue(std::string_view text) override;
  void setAccessKey(char32_t letter) override;
};

/// The action of a push button or a check box, which runs when the user clicks it.
using Action = std::function<void(NibObject* sender)>;

/// The common base of a push button and a check box: a control with a title.
template <class Class, class Widget>
class TitledControlOf : public ControlOf<Class, Widget>, public AccessKeyed {
 public:
  using ControlOf<Class, Widget>::ControlOf;

  void setTitle(std::string_view title) override {
    title_ = title;
    this->widget().set_use_underline(false);
    this->widget().set_label(title_);
    speakTitle();
  }
  void setAccessKey(char32_t letter) override {
    this->widget().set_use_underline();
    this->widget().set_label(marked(title_, letter));
    addKeyOf(letter, GTK_WIDGET(this->widget().gobj()));
    speakTitle();
  }

 private:
  // Otherwise a screen reader would speak the underscore of the mnemonic, and the text twice.
  void speakTitle() {
    auto* const accessible = GTK_ACCESSIBLE(this->widget().gobj());
    gtk_accessible_reset_relation(accessible, GTK_ACCESSIBLE_RELATION_LABELLED_BY);
    gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, title_.c_str(), -1);
  }

  std::string title_;
};

class Button : public TitledControlOf<MorvaTTButtonKV2, Gtk::Button> {
 public:
  explicit Button(Gtk::Button& button);
  void setAction(Action action) { action_ = std::move(action); }

 private:
  void onClicked();

  Action action_;
};

class CheckBox : public TitledControlOf<MorvaTTCheckBoxKV2, Gtk::CheckButton> {
 public:
  explicit CheckBox(Gtk::CheckButton& button);
  [[nodiscard]] int state() const override;
  void setState(int state) override;
  void setAction(Action action) { action_ = std::move(action); }

 private:
  void onToggled();

  Action action_;
  sigc::connection toggled_;
};

}  // namespace tandemtrim::platform::gtk
