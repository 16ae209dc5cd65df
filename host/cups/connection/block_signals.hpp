#pragma once

#include <csignal>

namespace tandemtrim::host {

/// Leaves signals to the other threads. A signal must reach the main thread, whose reading of a document it
/// ends.
inline void blockSignals() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace tandemtrim::host
