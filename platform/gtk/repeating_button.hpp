#pragma once

#include <functional>

#include <gtkmm/button.h>
#include <sigc++/connection.h>
#include <sigc++/trackable.h>

namespace tandemtrim::platform::gtk {

/// Runs an action at each click of a button, and again and again while the button is held down.
class RepeatingButton : public sigc::trackable {
 public:
  RepeatingButton(Gtk::Button& button, std::function<void()> action);
  RepeatingButton(const RepeatingButton&) = delete;
  RepeatingButton& operator=(const RepeatingButton&) = delete;
  ~RepeatingButton() { timer_.disconnect(); }

 private:
  [[nodiscard]] bool isHeld() const;
  void onStateChanged(Gtk::StateFlags before);
  void onClicked();
  void startTimer(unsigned milliseconds);
  bool onTimeout();

  Gtk::Button& button_;
  std::function<void()> action_;
  sigc::connection timer_;
  bool repeated_ = false;
};

}  // namespace tandemtrim::platform::gtk
