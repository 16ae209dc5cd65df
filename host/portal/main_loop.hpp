#pragma once

#include <chrono>
#include <functional>

namespace tandemtrim::host {

/// Runs `act` on the main loop, once the callback that runs there now has returned. May be called from any
/// thread.
void onMainLoop(std::function<void()> act);

/// Runs `act` on the main loop after this time, unless this object is destroyed before.
class Timer {
 public:
  Timer() = default;
  Timer(std::chrono::seconds time, std::function<void()> act);
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  Timer(Timer&& other) noexcept;
  Timer& operator=(Timer&& other) noexcept;
  ~Timer();

 private:
  unsigned source_ = 0;
};

}  // namespace tandemtrim::host
