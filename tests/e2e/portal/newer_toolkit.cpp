// Stands in for the module that starts GTK, and for a GTK that asks portals unless it is told not to. It says
// what it is asked to do, and that it finds no screen.
#include <cstdio>

extern "C" __attribute__((visibility("default"))) void gtk_disable_portals() noexcept {
  std::fputs("portals disabled\n", stderr);
}

extern "C" __attribute__((visibility("default"))) bool tandemTrimStartToolkit(
    const char* /*server*/) noexcept {
  std::fputs("toolkit started\n", stderr);
  return false;
}
