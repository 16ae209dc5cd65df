#pragma once

#include <cstdio>

#include <valgrind/callgrind.h>

/// The number of allocations of the process so far; defined only if the hook is preloaded.
extern "C" [[gnu::weak]] long benchAllocations();

namespace tandemtrim::bench {

inline long allocations() { return &benchAllocations == nullptr ? 0 : benchAllocations(); }

/// Counts during its lifetime: under callgrind the instructions, dumped under its name; otherwise the
/// allocations, printed with its name.
class Measured {
 public:
  explicit Measured(const char* name) : name_(name), before_(allocations()) {
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
  }
  Measured(const Measured&) = delete;
  Measured& operator=(const Measured&) = delete;
  ~Measured() {
    CALLGRIND_DUMP_STATS_AT(name_);
    CALLGRIND_STOP_INSTRUMENTATION;
    std::printf("%s\t%ld\n", name_, allocations() - before_);
  }

 private:
  const char* name_;
  long before_;
};

}  // namespace tandemtrim::bench
