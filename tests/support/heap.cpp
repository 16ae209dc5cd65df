#include "tests/support/heap.hpp"

#include <cstdlib>
#include <new>

namespace tandemtrim::test {
namespace {

// Whether this allocation must fail.
bool fails(Heap& heap) noexcept {
  if (heap.left < 0) return heap.isExhausted;
  const bool isLast = heap.left-- == 0;
  heap.isExhausted |= isLast && heap.forGood;
  return isLast || heap.isExhausted;
}

}  // namespace

Heap& heap() noexcept {
  static Heap observed;
  return observed;
}

}  // namespace tandemtrim::test

void* operator new(std::size_t size) {
  auto& heap = tandemtrim::test::heap();
  ++heap.allocations;
  void* address = tandemtrim::test::fails(heap) ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (address == nullptr) throw std::bad_alloc();
  ++heap.live;
  return address;
}

void operator delete(void* address) noexcept {
  auto& heap = tandemtrim::test::heap();
  if (heap.onRelease != nullptr) heap.onRelease(address);
  if (address != nullptr) --heap.live;
  std::free(address);
}

void operator delete(void* address, std::size_t) noexcept { operator delete(address); }
