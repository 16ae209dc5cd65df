#pragma once

#include "host/failure.hpp"

namespace tandemtrim::host {

/// While it exists, the first SIGINT or SIGTERM does not end the program, so that the job can be cancelled;
/// the second does, at once. Only one may exist at a time.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// Throws a Failure when a signal has come.
  static void check();
  /// The failure of a job; when a signal has come, with the signal as its cause.
  static Failure causeOf(const Failure& failure);
};

}  // namespace tandemtrim::host
