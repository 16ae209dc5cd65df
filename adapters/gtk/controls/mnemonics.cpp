#include "adapters/gtk/controls/mnemonics.hpp"

#include <optional>

#include <glibmm/ustring.h>

namespace tandemtrim::platform::gtk {
namespace {

// The toolkit compares a letter's code point with the symbol of the key that is pressed. They are the same in
// the Latin alphabet alone.
bool isFoundOnAKey(gunichar character) {
  return g_unichar_isalpha(character) != 0 && gdk_unicode_to_keyval(character) == character;
}

std::optional<std::size_t> freeLetter(const std::u32string& title, const std::set<gunichar>& taken,
                                      bool atBeginningOfWord) {
  bool insideWord = false;
  for (std::size_t index = 0; index < title.size(); ++index) {
    const gunichar character = title[index];
    const bool fits = isFoundOnAKey(character) && !(atBeginningOfWord && insideWord);
    if (fits && !taken.contains(g_unichar_tolower(character))) return index;
    insideWord = g_unichar_isalnum(character) != 0;
  }
  return std::nullopt;
}

}  // namespace

Mnemonics::Mnemonics(GtkWidget* view) { reserveLettersOf(GTK_WIDGET(gtk_widget_get_root(view)), view); }

// What is hidden may come up later; the other pages of a notebook never do while this one is seen.
void Mnemonics::reserveLettersOf(GtkWidget* widget, const GtkWidget* view) {
  if (widget == nullptr || widget == view || gtk_widget_get_child_visible(widget) == FALSE) return;
  if (GTK_IS_LABEL(widget)) {
    const auto letter = gdk_keyval_to_unicode(gtk_label_get_mnemonic_keyval(GTK_LABEL(widget)));
    if (letter != 0) taken_.insert(g_unichar_tolower(letter));
  }
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    reserveLettersOf(child, view);
}

std::string Mnemonics::mark(std::string_view title) {
  std::u32string characters;
  for (const auto character : Glib::ustring(std::string(title)).make_valid())
    characters.push_back(static_cast<char32_t>(character));
  auto own = freeLetter(characters, taken_, true);
  if (!own) own = freeLetter(characters, taken_, false);
  if (own) taken_.insert(g_unichar_tolower(characters[*own]));

  Glib::ustring marked;
  for (std::size_t index = 0; index < characters.size(); ++index) {
    if (index == own || characters[index] == U'_') marked += '_';
    marked += static_cast<gunichar>(characters[index]);
  }
  return marked;
}

}  // namespace tandemtrim::platform::gtk
