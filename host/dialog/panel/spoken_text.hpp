#pragma once

#include <string>

#include <gtkmm/widget.h>

namespace tandemtrim::host {

/// A text of a page that a screen reader speaks where the keyboard is, as it speaks nothing that appears
/// elsewhere: it describes the control of the page that has the focus when the text changes, or the next one.
class SpokenText : public sigc::trackable {
 public:
  /// For a page that is in its window.
  explicit SpokenText(Gtk::Widget& page);
  SpokenText(const SpokenText&) = delete;
  SpokenText& operator=(const SpokenText&) = delete;
  ~SpokenText();

  /// An empty text describes nothing.
  void set(const std::string& text);

 private:
  void describeFocused();
  void describeNothing();

  Gtk::Widget& page_;
  std::string text_;
  // What the text describes; null when nothing.
  GtkWidget* described_ = nullptr;
};

}  // namespace tandemtrim::host
