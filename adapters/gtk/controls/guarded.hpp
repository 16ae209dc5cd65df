#pragma once

#include <utility>

namespace tandemtrim::platform::gtk {

/// Runs a callback of the main loop and ignores its exceptions: no caller could handle them, and one that
/// left the callback would end the host's program.
template <class Call>
void guarded(Call&& call) noexcept {
  try {
    std::forward<Call>(call)();
  } catch (...) {
    return;
  }
}

}  // namespace tandemtrim::platform::gtk
