#pragma once

#include <utility>

namespace tandemtrim::platform::gtk {

/// Runs a call that the main loop asked for. There is no caller to hand an exception to, and one that left
/// the handler would end the host's program: it ends here, in silence.
template <class Call>
void guarded(Call&& call) noexcept {
  try {
    std::forward<Call>(call)();
  } catch (...) {
    return;
  }
}

}  // namespace tandemtrim::platform::gtk
