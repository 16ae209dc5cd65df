#include "host/portal/main_loop.hpp"

#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include <glib.h>

namespace tandemtrim::host {
namespace {

using Act = std::function<void()>;

// A separate lock, since ThreadSanitizer does not see those within GLib.
std::mutex lock;
std::deque<Act> handedOver;

Act takeNext() {
  const std::scoped_lock guard(lock);
  auto act = std::move(handedOver.front());
  handedOver.pop_front();
  return act;
}

void run(const Act& act) {
  try {
    act();
  } catch (const std::exception& failure) {
    g_warning("%s", failure.what());
  }
}

gboolean runNext(gpointer /*nothing*/) {
  run(takeNext());
  return G_SOURCE_REMOVE;
}

gboolean runOnce(gpointer act) {
  run(*static_cast<Act*>(act));
  return G_SOURCE_REMOVE;
}

void destroyAct(gpointer act) { delete static_cast<Act*>(act); }

}  // namespace

void onMainLoop(std::function<void()> act) {
  {
    const std::scoped_lock guard(lock);
    handedOver.push_back(std::move(act));
  }
  g_idle_add_full(G_PRIORITY_DEFAULT, runNext, nullptr, nullptr);
}

Timer::Timer(std::chrono::seconds time, std::function<void()> act)
    : source_(g_timeout_add_seconds_full(G_PRIORITY_DEFAULT, static_cast<unsigned>(time.count()), runOnce,
                                         new Act(std::move(act)), destroyAct)) {}

Timer::Timer(Timer&& other) noexcept : source_(std::exchange(other.source_, 0)) {}

Timer& Timer::operator=(Timer&& other) noexcept {
  std::swap(source_, other.source_);
  return *this;
}

// A source that has run no longer exists.
Timer::~Timer() {
  if (auto* const source = source_ == 0 ? nullptr : g_main_context_find_source_by_id(nullptr, source_))
    g_source_destroy(source);
}

}  // namespace tandemtrim::host
