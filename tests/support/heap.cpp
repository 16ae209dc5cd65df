#include "tests/support/heap.hpp"

#include <cstdlib>
#include <new>

namespace tandemtrim::test {

Heap& heap() noexcept {
  static Heap observed;
  return observed;
}

}  // namespace tandemtrim::test

void* operator new(std::size_t size) {
  auto& heap = tandemtrim::test::heap();
  ++heap.allocations;
  void* address = heap.isExhausted ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (address == nullptr) throw std::bad_alloc();
  return address;
}

void operator delete(void* address) noexcept {
  const auto& heap = tandemtrim::test::heap();
  if (heap.onRelease != nullptr) heap.onRelease(address);
  std::free(address);
}

void operator delete(void* address, std::size_t) noexcept { operator delete(address); }
