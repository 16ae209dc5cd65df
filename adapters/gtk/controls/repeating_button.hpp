#pragma once

#include <functional>

#include <gtk/gtk.h>

namespace tandemtrim::platform::gtk {

/// Runs an action at each click of a button, and again and again while the button is held down. The button
/// outlives it.
class RepeatingButton {
 public:
  RepeatingButton(GtkWidget* button, std::function<void()> action);
  RepeatingButton(const RepeatingButton&) = delete;
  RepeatingButton& operator=(const RepeatingButton&) = delete;
  ~RepeatingButton();

 private:
  [[nodiscard]] bool isHeld() const;
  void startTimer(unsigned milliseconds);
  void stopTimer();
  static void onStateChanged(GtkWidget* button, GtkStateFlags before, RepeatingButton* self);
  static void onClicked(GtkWidget* button, RepeatingButton* self);
  static gboolean onTimeout(gpointer repeatingButton);

  GtkWidget* button_;
  std::function<void()> action_;
  guint timer_ = 0;
  bool repeated_ = false;
};

}  // namespace tandemtrim::platform::gtk
