#pragma once

/// Watches the global heap of a test program that links this, and makes allocations fail.
namespace tandemtrim::test {

struct Heap {
  long allocations = 0;
  /// Allocations that are not released yet.
  long live = 0;
  /// Whether every allocation throws std::bad_alloc.
  bool isExhausted = false;
  /// How many allocations succeed before one throws; negative for no limit.
  long left = -1;
  /// Whether all allocations after that one throw, too.
  bool forGood = false;
  /// Called with each released address, if set.
  void (*onRelease)(const void* address) = nullptr;
};

Heap& heap() noexcept;

}  // namespace tandemtrim::test
