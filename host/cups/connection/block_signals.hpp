#pragma once

#include <csignal>

namespace tandemtrim::host {

/// Leaves signals to the other threads. They end a reading of a document, which is the main thread's.
inline void blockSignals() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace tandemtrim::host
