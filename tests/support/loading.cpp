// The search for leaks ignores what libraries allocate while they load. All libraries stay loaded, so that
// the report can name their functions.

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

// These shadow the C library's functions.
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
