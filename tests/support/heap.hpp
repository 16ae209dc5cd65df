#pragma once

/// The global heap of a test program that links this, to watch and to run out of.
namespace tandemtrim::test {

struct Heap {
  long allocations = 0;
  /// How many of them are not released yet.
  long live = 0;
  /// Every allocation raises std::bad_alloc.
  bool isExhausted = false;
  /// So many allocations succeed before one raises; negative: all of them.
  long left = -1;
  /// Whether the heap stays exhausted then.
  bool forGood = false;
  /// Called with each address that is released, if set.
  void (*onRelease)(const void* address) = nullptr;
};

Heap& heap() noexcept;

}  // namespace tandemtrim::test
