#pragma once

#include <memory>
#include <string>

#include <gtk/gtk.h>

namespace tandemtrim::test {

/// A person in front of a window: real key presses and clicks, by way of the X server. Each act returns when
/// the window has dealt with it.
class Person {
 public:
  /// Presents the window and gives it the keyboard; it is destroyed with this.
  explicit Person(GtkWindow* window);
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;
  ~Person();

  /// Puts the keyboard's focus on the widget.
  void focus(GtkWidget* widget);
  /// Presses the key of this keysym once, with Control held down or not.
  void press(unsigned keysym, bool control = false);
  /// Types the text key by key. Characters that are not of ASCII have no key and are left out.
  void type(const std::string& text);
  /// Pastes the text from the clipboard.
  void paste(const std::string& text);
  /// Clicks in the middle of the widget.
  void click(GtkWidget* widget);
  /// Waits until the window is painted as it is now.
  void awaitFrame();

 private:
  struct X;
  void send(unsigned keysym, bool control);
  void turnTo();
  void settle();

  GtkWindow* window_;
  std::unique_ptr<X> x_;
  bool answered_ = false;
};

}  // namespace tandemtrim::test
