// Preloaded into a program, counts every malloc, calloc and realloc of it and its libraries.
#include <atomic>
#include <cstddef>

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

namespace {
std::atomic<long> made{0};
}

[[gnu::visibility("default")]] long benchAllocations() { return made.load(std::memory_order_relaxed); }

[[gnu::visibility("default")]] void* malloc(std::size_t size) {
  made.fetch_add(1, std::memory_order_relaxed);
  return __libc_malloc(size);
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) {
  made.fetch_add(1, std::memory_order_relaxed);
  return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void* realloc(void* block, std::size_t size) {
  made.fetch_add(1, std::memory_order_relaxed);
  return __libc_realloc(block, size);
}
}
