// Replaces the module that starts GTK, and a GTK that uses portals unless gtk_disable_portals() is called.
// Prints each call, and reports that there is no screen.
#include <cstdio>

extern "C" __attribute__((visibility("default"))) void gtk_disable_portals() noexcept {
  std::fputs("portals disabled\n", stderr);
}

extern "C" __attribute__((visibility("default"))) bool tandemTrimStartToolkit(
    const char* /*server*/) noexcept {
  std::fputs("toolkit started\n", stderr);
  return false;
}
