#pragma once

#include <string>
#include <string_view>

#include <gtk/gtk.h>

namespace tandemtrim::platform::gtk {

/// The title in the toolkit's spelling: an underscore before the letter, preferably at the beginning of a
/// word, and every underscore of the title itself doubled. A letter that the title lacks follows it in
/// parentheses, before a colon.
std::string marked(std::string_view title, char32_t letter);

/// Lets the letter's key act on the widget where the toolkit would not know it: for a label that is marked
/// the toolkit waits for a key whose symbol is the letter's code point, which the keys of Latin letters alone
/// have.
void addKeyOf(char32_t letter, GtkWidget* widget);

/// A control that the keyboard reaches by a letter of its title.
class AccessKeyed {
 public:
  virtual ~AccessKeyed() = default;
  /// Shows the title with the letter marked, which takes the keyboard to the control.
  virtual void setAccessKey(char32_t letter) = 0;
};

}  // namespace tandemtrim::platform::gtk
