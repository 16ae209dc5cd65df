#include "adapters/gtk/controls/access_key.hpp"

#include <optional>

#include <glibmm/ustring.h>

namespace tandemtrim::platform::gtk {
namespace {

std::optional<std::size_t> placeOf(char32_t letter, std::u32string_view title) {
  std::optional<std::size_t> first;
  bool insideWord = false;
  for (std::size_t index = 0; index < title.size(); ++index) {
    if (g_unichar_tolower(title[index]) == g_unichar_tolower(letter)) {
      if (!insideWord) return index;
      if (!first) first = index;
    }
    insideWord = g_unichar_isalnum(title[index]) != 0;
  }
  return first;
}

}  // namespace

std::string marked(std::string_view title, char32_t letter) {
  std::u32string characters;
  for (const auto character : Glib::ustring(std::string(title)).make_valid())
    characters.push_back(static_cast<char32_t>(character));
  auto place = placeOf(letter, characters);
  if (!place) {
    const auto end = characters.ends_with(U':') ? characters.size() - 1 : characters.size();
    characters.insert(end, {U'(', static_cast<char32_t>(g_unichar_toupper(letter)), U')'});
    place = end + 1;
  }
  Glib::ustring spelled;
  for (std::size_t index = 0; index < characters.size(); ++index) {
    if (index == place || characters[index] == U'_') spelled += '_';
    spelled += static_cast<gunichar>(characters[index]);
  }
  return spelled;
}

void addKeyOf(char32_t letter, GtkWidget* widget) {
  const auto key = gdk_unicode_to_keyval(g_unichar_tolower(letter));
  if (key == g_unichar_tolower(letter)) return;
  auto* const keys = gtk_shortcut_controller_new();
  gtk_shortcut_controller_set_scope(GTK_SHORTCUT_CONTROLLER(keys), GTK_SHORTCUT_SCOPE_MANAGED);
  gtk_shortcut_controller_add_shortcut(
      GTK_SHORTCUT_CONTROLLER(keys),
      gtk_shortcut_new(gtk_mnemonic_trigger_new(key), g_object_ref(gtk_mnemonic_action_get())));
  gtk_widget_add_controller(widget, keys);
}

}  // namespace tandemtrim::platform::gtk
