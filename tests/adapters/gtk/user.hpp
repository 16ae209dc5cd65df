#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtk/gtk.h>

namespace tandemtrim::test {

/// Runs the main loop until `isDone`; raises std::runtime_error that names `what` when it takes too long.
void waitUntil(const char* what, const std::function<bool()>& isDone);

/// A user in front of a window: real key presses and clicks through the X server. Each act returns when the
/// window has handled it.
class User {
 public:
  /// Presents the window and gives it the keyboard. The destructor destroys the window.
  explicit User(GtkWindow* window);
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User();

  /// Puts the keyboard's focus on the widget.
  void focus(GtkWidget* widget);
  /// Presses the key of this keysym once, while the key of `modifier` is down (0: no key).
  void press(unsigned keysym, unsigned modifier = 0);
  /// Types the text key by key. Characters outside ASCII have no key and are left out.
  void type(const std::string& text);
  /// Pastes the text from the clipboard.
  void paste(const std::string& text);
  /// Clicks in the middle of the widget.
  void click(GtkWidget* widget);
  /// Holds the mouse button down on the widget until `isDone`, then releases it.
  void hold(GtkWidget* widget, const std::function<bool()>& isDone);
  /// Turns the wheel by one notch over the widget: up, or down.
  void turnWheel(GtkWidget* widget, bool up);
  /// Drags the selected text at the end of an entry into the middle of another entry. Does not wait until the
  /// window has handled the drop.
  void drag(GtkWidget* from, GtkWidget* to);
  /// Waits until the window is painted as it is now.
  void awaitFrame();

 private:
  struct X;
  void send(unsigned keysym, unsigned modifier);
  void pointAt(GtkWidget* widget, double across = 0.5);
  void turnTo();
  void settle();

  GtkWindow* window_;
  std::unique_ptr<X> x_;
  gulong answers_ = 0;
  bool answered_ = false;
};

}  // namespace tandemtrim::test
