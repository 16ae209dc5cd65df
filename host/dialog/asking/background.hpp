#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "host/cups/connection/login.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {

/// The result of a piece of work, or why it failed.
template <class Result>
struct Outcome {
  std::optional<Result> result;
  std::optional<Failure> failure;
};

/// How many threads are at work.
inline std::atomic<int> underWay = 0;

/// Answers without a login.
inline std::optional<Login> nobodyToAsk(const LoginQuestion& /*question*/) { return std::nullopt; }

/// Runs `act` on the main loop once there is nothing to draw. May be called from any thread.
void inForeground(std::function<void()> act);

/// Runs the work; returns its result or its failure.
template <class Result>
Outcome<Result> outcomeOf(const std::function<Result()>& work) {
  try {
    return {work(), {}};
  } catch (const Failure& failure) {
    return {{}, failure};
  } catch (const std::exception& failure) {
    return {{}, Failure(failure.what())};
  }
}

/// Runs `work` on a separate thread, then `done` with the outcome on the main loop, so that a silent print
/// server never blocks the dialog. `ask` answers a server that requires a login. `done` is not called once
/// `listener` is gone. A thread that cannot be started is a failure, too. The program does not wait for the
/// work when it ends.
template <class Result>
void inBackground(std::weak_ptr<void> listener, std::function<Result()> work,
                  std::function<void(Outcome<Result>)> done, AskForLogin ask = nobodyToAsk) {
  const auto deliver = [listener = std::move(listener), done = std::move(done)](Outcome<Result> outcome) {
    inForeground([listener, done, outcome = std::make_shared<Outcome<Result>>(std::move(outcome))] {
      if (!listener.expired()) done(std::move(*outcome));
    });
  };
  ++underWay;
  try {
    std::thread([deliver, work = std::move(work), ask = std::move(ask)] {
      answerLogins(ask);
      deliver(outcomeOf<Result>(work));
      --underWay;
    }).detach();
  } catch (const std::system_error& failure) {
    --underWay;
    deliver({{}, Failure(failure.what())});
  }
}

}  // namespace tandemtrim::host
