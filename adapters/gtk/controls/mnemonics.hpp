#pragma once

#include <set>
#include <string>
#include <string_view>

#include <gtk/gtk.h>

namespace tandemtrim::platform::gtk {

/// Hands out the letters by which the keyboard reaches the controls of one panel, whatever the language of
/// their titles.
class Mnemonics {
 public:
  /// All letters are free but those that the rest of the view's window uses already.
  explicit Mnemonics(GtkWidget* view);

  /// The title in the toolkit's spelling: an underscore before the letter that is now its own, preferably at
  /// the beginning of a word, and every underscore of the title itself doubled. A title without a free
  /// letter of the Latin alphabet gets none: the toolkit knows no others.
  [[nodiscard]] std::string mark(std::string_view title);

 private:
  void reserveLettersOf(GtkWidget* widget, const GtkWidget* view);

  std::set<gunichar> taken_;
};

/// A control whose title can bear a mnemonic.
class Titled {
 public:
  virtual ~Titled() = default;
  /// Shows the title with a letter of its own.
  virtual void showMnemonic(Mnemonics& mnemonics) = 0;
};

}  // namespace tandemtrim::platform::gtk
