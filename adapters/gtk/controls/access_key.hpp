#pragma once

#include <string>
#include <string_view>

#include <gtk/gtk.h>

namespace tandemtrim::platform::gtk {

/// The title in the toolkit's notation: an underscore before the letter, preferably at the beginning of a
/// word, and every underscore of the title itself doubled. A letter that the title lacks is appended in
/// parentheses, before a final colon.
std::string marked(std::string_view title, char32_t letter);

/// Makes the letter's key activate the widget if the toolkit would not recognise the key: for a mnemonic the
/// toolkit expects a key whose symbol is the letter's code point, which is so only for Latin letters.
void addKeyOf(char32_t letter, GtkWidget* widget);

/// A control that the keyboard reaches by a letter of its title. The key clicks a button or a check box; a
/// label's key opens its menu or moves the focus to its text box.
class AccessKeyed {
 public:
  virtual ~AccessKeyed() = default;
  /// Marks the letter in the title and makes its key the control's mnemonic.
  virtual void setAccessKey(char32_t letter) = 0;
};

}  // namespace tandemtrim::platform::gtk
