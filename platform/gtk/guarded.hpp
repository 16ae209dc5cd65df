#pragma once

#include <exception>
#include <utility>

#include <glib.h>

namespace tandemtrim::platform::gtk {

/// Runs a call that the main loop asked for. There is no caller to hand an exception to, and one that left
/// the handler would end the host's program: it is logged instead.
template <class Call>
void guarded(Call&& call) noexcept {
  try {
    std::forward<Call>(call)();
  } catch (const std::exception& raised) {
    g_log("tandem-trim", G_LOG_LEVEL_WARNING, "the panel failed: %s", raised.what());
  } catch (...) {
    g_log("tandem-trim", G_LOG_LEVEL_WARNING, "the panel failed for a reason that it does not tell");
  }
}

}  // namespace tandemtrim::platform::gtk
