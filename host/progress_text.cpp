#include "host/progress_text.hpp"

#include <algorithm>

#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::uint64_t kMegabyte = 1'000'000;

}  // namespace

std::string progressText(const std::string& name, std::uint64_t sent, std::optional<std::uint64_t> size,
                         const std::function<std::string(std::string_view)>& translate) {
  const auto megabytes = [](std::uint64_t bytes) { return std::to_string(bytes / kMegabyte); };
  if (!size || *size == 0)
    return filled(translate(kSentText), {{"[name]", name}, {"[sent]", megabytes(sent)}});
  // The document may have grown since its size was read.
  const auto part = std::min(sent, *size);
  const auto percent = static_cast<unsigned>(100.0 * static_cast<double>(part) / static_cast<double>(*size));
  return filled(translate(kSentOfText),
                {{"[name]", name}, {"[percent]", std::to_string(percent)}, {"[size]", megabytes(*size)}});
}

}  // namespace tandemtrim::host
