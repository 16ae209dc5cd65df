#pragma once

/// The global heap of a test program that links this, to watch and to run out of.
namespace tandemtrim::test {

struct Heap {
  long allocations = 0;
  /// Every allocation raises std::bad_alloc.
  bool isExhausted = false;
  /// Called with each address that is released, if set.
  void (*onRelease)(const void* address) = nullptr;
};

Heap& heap() noexcept;

}  // namespace tandemtrim::test
