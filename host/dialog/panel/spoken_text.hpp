#pragma once

#include <string>

#include <gtkmm/widget.h>

namespace tandemtrim::host {

/// A text of a page that a screen reader speaks. A screen reader speaks only texts about the focused control.
/// So the text becomes the description of the page's control that has the focus when the text changes, or of
/// the next one that gets the focus.
class SpokenText : public sigc::trackable {
 public:
  /// The page must be in its window already.
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
  // The control that the text describes, or null.
  GtkWidget* described_ = nullptr;
};

}  // namespace tandemtrim::host
