#include "host/portal/portal_variables.hpp"

#include <memory>
#include <string>

#include <glib.h>

namespace tandemtrim::host {

void removePortalVariables() {
  g_unsetenv("GTK_USE_PORTAL");
  const char* const flags = g_getenv("GDK_DEBUG");
  if (flags == nullptr) return;
  const std::unique_ptr<char*, decltype(&g_strfreev)> words(g_strsplit_set(flags, ":;, \t", -1), g_strfreev);
  std::string others;
  for (char** word = words.get(); *word != nullptr; ++word) {
    if (g_ascii_strcasecmp(*word, "portals") != 0) others += (others.empty() ? "" : ",") + std::string(*word);
  }
  g_setenv("GDK_DEBUG", others.c_str(), TRUE);
}

}  // namespace tandemtrim::host
