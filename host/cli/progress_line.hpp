#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tandemtrim::host {

/// A line on standard error that shows the progress of a long upload. Short uploads, and those without a
/// terminal, show nothing.
class ProgressLine {
 public:
  ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  /// Clears the line.
  ~ProgressLine();

  void show(const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size);

 private:
  using Clock = std::chrono::steady_clock;

  bool onTerminal_;
  Clock::time_point next_;
  bool shown_ = false;
};

}  // namespace tandemtrim::host
