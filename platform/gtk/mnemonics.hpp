#pragma once

#include <set>
#include <string>
#include <string_view>

#include <glib.h>

namespace tandemtrim::platform::gtk {

/// Hands out the letters by which the keyboard reaches the controls of one panel, whatever the language of
/// their titles.
class Mnemonics {
 public:
  /// The title in the toolkit's spelling: an underscore before the letter that is now its own, preferably at
  /// the beginning of a word, and every underscore of the title itself doubled. A title without a free
  /// letter gets none, nor does one in a script that is typed through an input method.
  [[nodiscard]] std::string mark(std::string_view title);

 private:
  std::set<gunichar> taken_;
};

}  // namespace tandemtrim::platform::gtk
