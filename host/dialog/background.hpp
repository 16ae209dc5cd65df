#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include <cups/cups.h>
#include <glibmm/main.h>

#include "host/failure.hpp"

namespace tandemtrim::host {

/// The result of a piece of work, or why it failed.
template <class Result>
struct Outcome {
  std::optional<Result> result;
  std::optional<Failure> failure;
};

/// How many pieces of work are under way.
inline std::atomic<int> underWay = 0;

/// Runs `work` on a thread of its own, then `done` with the outcome on the main loop, so that a silent print
/// server never blocks the dialog. `done` does not run once `listener` is gone. Nothing waits for the work
/// when the program ends.
template <class Result>
void inBackground(std::weak_ptr<void> listener, std::function<Result()> work,
                  std::function<void(Outcome<Result>)> done) {
  ++underWay;
  std::thread([listener = std::move(listener), work = std::move(work), done = std::move(done)] {
    // Keeps libcups from asking for a password at the terminal.
    cupsSetPasswordCB2([](auto...) -> const char* { return nullptr; }, nullptr);
    auto outcome = std::make_shared<Outcome<Result>>();
    try {
      outcome->result = work();
    } catch (const Failure& failure) {
      outcome->failure = failure;
    } catch (const std::exception& failure) {
      outcome->failure = Failure(failure.what());
    }
    Glib::signal_idle().connect_once([listener, done, outcome] {
      if (!listener.expired()) done(std::move(*outcome));
    });
    --underWay;
  }).detach();
}

}  // namespace tandemtrim::host
