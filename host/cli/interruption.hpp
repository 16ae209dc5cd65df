#pragma once

namespace tandemtrim::host {

/// While it lives, the first SIGINT or SIGTERM does not end the program, so that a job can be called back; the
/// second does, at once. One at a time.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// Failure when there was a signal, with the exit status that shells give to it.
  static void check();
};

}  // namespace tandemtrim::host
