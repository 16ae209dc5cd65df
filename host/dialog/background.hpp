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

/// What a piece of work came to: its result, or why it failed.
template <class Result>
struct Outcome {
  std::optional<Result> result;
  std::optional<Failure> failure;
};

/// How many pieces of work are under way.
inline std::atomic<int> underWay = 0;

/// Runs `work` on a thread of its own and then `done` with what came of it on the main loop, so that a print
/// server that stays silent never holds the dialog up. Nothing is waited for at the program's end: `done`
/// does not run when `listener` is gone by then.
template <class Result>
void inBackground(std::weak_ptr<void> listener, std::function<Result()> work,
                  std::function<void(Outcome<Result>)> done) {
  ++underWay;
  std::thread([listener = std::move(listener), work = std::move(work), done = std::move(done)] {
    // libcups would ask for a password at the terminal, where nobody may sit.
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
