#include "host/portal/main_loop.hpp"

#include <exception>
#include <utility>

#include <glib.h>

namespace tandemtrim::host {
namespace {

using Act = std::function<void()>;

gboolean runOnce(gpointer act) {
  try {
    (*static_cast<Act*>(act))();
  } catch (const std::exception& failure) {
    g_warning("%s", failure.what());
  }
  return G_SOURCE_REMOVE;
}

void destroyAct(gpointer act) { delete static_cast<Act*>(act); }

}  // namespace

void onMainLoop(std::function<void()> act) {
  g_idle_add_full(G_PRIORITY_DEFAULT, runOnce, new Act(std::move(act)), destroyAct);
}

Timer::Timer(std::chrono::seconds time, std::function<void()> act)
    : source_(g_timeout_add_seconds_full(G_PRIORITY_DEFAULT, static_cast<unsigned>(time.count()), runOnce,
                                         new Act(std::move(act)), destroyAct)) {}

Timer::Timer(Timer&& other) noexcept : source_(std::exchange(other.source_, 0)) {}

Timer& Timer::operator=(Timer&& other) noexcept {
  std::swap(source_, other.source_);
  return *this;
}

// A source that has run is gone.
Timer::~Timer() {
  if (auto* const source = source_ == 0 ? nullptr : g_main_context_find_source_by_id(nullptr, source_))
    g_source_destroy(source);
}

}  // namespace tandemtrim::host
