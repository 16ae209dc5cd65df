#include "host/progress_line.hpp"

#include <iostream>

#include <unistd.h>

#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::milliseconds kFirst{500};
constexpr std::chrono::milliseconds kEach{100};
constexpr std::uint64_t kMegabyte = 1'000'000;
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
  std::cerr << kClear << progressText(name, sent, size) << std::flush;
}

std::string progressText(const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size,
                         const std::function<std::string(std::string_view)>& translate) {
  const auto megabytes = [](std::uint64_t bytes) { return std::to_string(bytes / kMegabyte); };
  if (!size || *size == 0)
    return filled(translate(kSentText), {{"[name]", name}, {"[sent]", megabytes(sent)}});
  const auto percent = static_cast<unsigned>(100.0 * static_cast<double>(sent) / static_cast<double>(*size));
  return filled(translate(kSentOfText),
                {{"[name]", name}, {"[percent]", std::to_string(percent)}, {"[size]", megabytes(*size)}});
}

}  // namespace tandemtrim::host
