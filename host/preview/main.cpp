// tandem-trim-page PAGE PIXELS: renders a page of the PDF document on standard input, a regular file, and
// answers on standard output; see page_answer.hpp. A document that takes control of this program can read
// what its user can, but has no way out except the answer; see limits.hpp.
#include <charconv>
#include <csignal>
#include <cstring>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include <unistd.h>

#include "host/preview/limits.hpp"
#include "host/preview/rendering.hpp"

using namespace tandemtrim::host;

namespace {

constexpr int kMostPixels = 1024;

std::optional<int> numberIn(std::string_view text, int most) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > most)
    return std::nullopt;
  return number;
}

bool writeAll(std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const auto written = write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (written < 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

PageStatus answer(std::span<char* const> words) {
  if (words.size() != 3) return PageStatus::notStarted;
  const auto page = numberIn(words[1], std::numeric_limits<int>::max());
  const auto longestSide = numberIn(words[2], kMostPixels);
  // A duplicate, because Poppler would treat the descriptor of standard input as a pipe and read all of it at
  // once.
  const int document = dup(STDIN_FILENO);
  if (!page || !longestSide) return PageStatus::notStarted;
  const auto rendering = render(document, *page, *longestSide);
  if (rendering.status != PageStatus::rendered) return rendering.status;
  const bool isWritten = writeAll(std::as_bytes(std::span(&rendering.answer, 1))) &&
                         writeAll(std::as_bytes(std::span(rendering.pixels)));
  return isWritten ? PageStatus::rendered : PageStatus::notStarted;
}

}  // namespace

int main(int count, char* words[]) {
  // Without destructors: the system frees everything at once.
  _exit(static_cast<int>(limitProcess() ? answer({words, static_cast<std::size_t>(count)})
                                        : PageStatus::notStarted));
}
