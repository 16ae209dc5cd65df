#include "host/cli/progress_line.hpp"

#include <iostream>

#include <unistd.h>

#include "host/plain_text.hpp"
#include "host/progress_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::milliseconds kFirst{500};
constexpr std::chrono::milliseconds kEach{100};
// Puts the cursor at the line's beginning and clears the line.
constexpr const char* kClear = "\r\033[K";

}  // namespace

ProgressLine::ProgressLine() : onTerminal_(isatty(STDERR_FILENO) != 0), next_(Clock::now() + kFirst) {}

ProgressLine::~ProgressLine() {
  if (shown_) std::cerr << kClear << std::flush;
}

void ProgressLine::show(const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size) {
  if (!onTerminal_ || Clock::now() < next_) return;
  next_ = Clock::now() + kEach;
  shown_ = true;
  std::cerr << kClear << plainText(progressText(name, sent, size)) << std::flush;
}

}  // namespace tandemtrim::host
