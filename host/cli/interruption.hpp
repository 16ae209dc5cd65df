#pragma once

#include "host/failure.hpp"

namespace tandemtrim::host {

/// While it lives, the first SIGINT or SIGTERM does not end the program, so that a job can be called back;
/// the second does, at once. One at a time.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// Failure when there was a signal.
  static void check();
  /// The failure of a job; where there was a signal, with the signal as its cause.
  static Failure causeOf(const Failure& failure);
};

}  // namespace tandemtrim::host
