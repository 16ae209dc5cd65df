#pragma once

#include <cstdio>

#include <valgrind/callgrind.h>

/// How many allocations the process has asked for; there only where the hook is preloaded.
extern "C" [[gnu::weak]] long benchAllocations();

namespace tandemtrim::bench {

inline long allocations() { return &benchAllocations == nullptr ? 0 : benchAllocations(); }

/// Counts what is done while it lives: under callgrind the instructions, dumped under its name; elsewhere the
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
