#include "platform/gtk/mnemonics.hpp"

#include <optional>

#include <glibmm/ustring.h>

namespace tandemtrim::platform::gtk {
namespace {

// Wide characters are those of the scripts that no key types directly.
bool isTypedByOneKey(gunichar character) {
  return g_unichar_isalpha(character) != 0 && g_unichar_iswide(character) == 0;
}

std::optional<std::size_t> freeLetter(const std::u32string& title, const std::set<gunichar>& taken,
                                      bool atBeginningOfWord) {
  bool insideWord = false;
  for (std::size_t index = 0; index < title.size(); ++index) {
    const gunichar character = title[index];
    const bool fits = isTypedByOneKey(character) && !(atBeginningOfWord && insideWord);
    if (fits && !taken.contains(g_unichar_tolower(character))) return index;
    insideWord = g_unichar_isalnum(character) != 0;
  }
  return std::nullopt;
}

}  // namespace

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
