#pragma once

#include <csignal>

namespace tandemtrim::host {

/// Blocks all signals on this thread, so that they reach the main thread, where they end the reading of a
/// document.
inline void blockSignals() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace tandemtrim::host
