// What libraries allocate while they are loaded is theirs: leaks are looked for in what comes after, and
// whoever leaks is still there in the end to be named.

#include <dlfcn.h>
#include <sanitizer/lsan_interface.h>

namespace {

using Function = void (*)();
using Open = void* (*)(const char*, int);

// Runs before any library's own code.
[[gnu::section(".preinit_array"), gnu::used]] Function beforeLibraries = __lsan_disable;

// Runs when all libraries are loaded.
[[gnu::constructor(101)]] void afterLibraries() { __lsan_enable(); }

}  // namespace

// In the place of the system's, which they shadow.
extern "C" {

[[gnu::visibility("default")]] void* dlopen(const char* file, int mode) noexcept {
  static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "dlopen"));
  __lsan_disable();
  void* const library = open(file, mode);
  __lsan_enable();
  return library;
}

[[gnu::visibility("default")]] int dlclose(void* /*library*/) noexcept { return 0; }
}
