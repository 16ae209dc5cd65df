#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>

#include <glib.h>

#include "host/plain_text.hpp"
#include "host/portal/service.hpp"

namespace {

// A dialog that asked the portal for itself would wait for itself.
void useNoPortal() {
  g_unsetenv("GTK_USE_PORTAL");
  const char* const debug = g_getenv("GDK_DEBUG");
  if (debug == nullptr) return;
  std::string others;
  char** const words = g_strsplit_set(debug, ":;, \t", -1);
  for (char** word = words; *word != nullptr; ++word) {
    if (g_ascii_strcasecmp(*word, "portals") != 0) others += (others.empty() ? "" : ",") + std::string(*word);
  }
  g_strfreev(words);
  g_setenv("GDK_DEBUG", others.c_str(), TRUE);
}

}  // namespace

int main() {
  using namespace tandemtrim::host;
  useNoPortal();
  // A document that is too large for the user's limit is a message then, not the service's end.
  std::signal(SIGXFSZ, SIG_IGN);
  const auto report = [](const std::string& message) {
    std::cerr << "tandem-trim-portal: " << plainText(message) << std::endl;
  };
  return Service(report).run();
}
