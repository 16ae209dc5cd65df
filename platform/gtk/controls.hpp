#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>

#include "platform/gtk/control.hpp"
#include "platform/gtk/mnemonics.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// A label. It takes a mnemonic when it is the label of a control, and is read in the direction of the panel,
/// whatever its first letter.
class TextLabel : public ControlOf<MorvaTTTextLabelKV2, Gtk::Label> {
 public:
  TextLabel(Gtk::Label& label, Mnemonics& mnemonics) : ControlOf(label), mnemonics_(mnemonics) {}

  void setTextColor(Color color) override;
  void setStringValue(std::string_view text) override;

 private:
  Mnemonics& mnemonics_;
};

/// What a push button and a check box do when the person clicks them.
using Action = std::function<void(NibObject* sender)>;

class Button : public ControlOf<MorvaTTButtonKV2, Gtk::Button> {
 public:
  Button(Gtk::Button& button, Mnemonics& mnemonics);
  void setTitle(std::string_view title) override { widget().set_label(mnemonics_.mark(title)); }
  void setAction(Action action) { action_ = std::move(action); }

 private:
  void onClicked();

  Mnemonics& mnemonics_;
  Action action_;
};

class CheckBox : public ControlOf<MorvaTTCheckBoxKV2, Gtk::CheckButton> {
 public:
  CheckBox(Gtk::CheckButton& button, Mnemonics& mnemonics);
  void setTitle(std::string_view title) override { widget().set_label(mnemonics_.mark(title)); }
  [[nodiscard]] int state() const override;
  void setState(int state) override;
  void setAction(Action action) { action_ = std::move(action); }

 private:
  void onToggled();

  Mnemonics& mnemonics_;
  Action action_;
  sigc::connection toggled_;
};

}  // namespace tandemtrim::platform::gtk
