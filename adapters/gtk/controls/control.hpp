#pragma once

#include <string>
#include <string_view>

#include <gtkmm/widget.h>
#include <sigc++/trackable.h>

#include "platform/controls.hpp"

namespace tandemtrim::platform::gtk {

/// The base of every control: one of the nib's classes around a widget, which the nib keeps alive. The
/// widget's signals are disconnected when the control is destroyed, so that a widget that the host keeps
/// longer does nothing.
template <class Class, class Widget>
class ControlOf : public Class, public sigc::trackable {
 public:
  explicit ControlOf(Widget& widget) : widget_(widget) {}
  ControlOf(const ControlOf&) = delete;
  ControlOf& operator=(const ControlOf&) = delete;

  void setEnabled(bool enabled) override { widget_.set_sensitive(enabled); }
  [[nodiscard]] std::string stringValue() const override { return text_; }
  void setStringValue(std::string_view text) override { text_ = text; }

  [[nodiscard]] Widget& widget() const { return widget_; }

 private:
  Widget& widget_;
  std::string text_;
};

template <class Class, class Widget>
class IdentifiedControlOf : public ControlOf<Class, Widget> {
 public:
  using ControlOf<Class, Widget>::ControlOf;

  void setIdentifier(std::string_view identifier) override { identifier_ = identifier; }
  [[nodiscard]] std::string identifier() const override { return identifier_; }

 private:
  std::string identifier_;
};

}  // namespace tandemtrim::platform::gtk
