#include "host/dialog/asking/background.hpp"

#include <deque>
#include <mutex>

#include <glib.h>
#include <glibmm/exceptionhandler.h>

namespace tandemtrim::host {
namespace {

// A separate lock, since ThreadSanitizer does not see those within GLib.
std::mutex foregroundLock;
std::deque<std::function<void()>> foregroundActs;

std::function<void()> takeNext() {
  const std::scoped_lock lock(foregroundLock);
  auto act = std::move(foregroundActs.front());
  foregroundActs.pop_front();
  return act;
}

gboolean runNext(gpointer /*nothing*/) {
  try {
    takeNext()();
  } catch (...) {
    Glib::exception_handlers_invoke();
  }
  return G_SOURCE_REMOVE;
}

}  // namespace

void inForeground(std::function<void()> act) {
  {
    const std::scoped_lock lock(foregroundLock);
    foregroundActs.push_back(std::move(act));
  }
  g_idle_add(runNext, nullptr);
}

}  // namespace tandemtrim::host
