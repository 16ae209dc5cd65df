// The input is read both as a document whose page is shown and as the answer of a program that renders pages.
// A page that results has a whole picture no larger than requested; a page that cannot be rendered has a
// reason. Either comes within the time limit for a page.
#include <chrono>
#include <cmath>
#include <span>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/support/target.hpp"
#include "host/dialog/preview/page_reader.hpp"
#include "host/failure.hpp"

namespace tandemtrim::fuzz {
namespace {

using namespace host;

constexpr int kLongestSide = 64;
constexpr std::chrono::seconds kLimit{5};
// The delay that a busy machine may cause.
constexpr std::chrono::seconds kLate{4};

void requirePage(const RenderedPage& page) {
  require(page.pages > 0, "a document has pages");
  require(page.columns > 0 && page.columns <= kLongestSide && page.rows > 0 && page.rows <= kLongestSide,
          "a picture is no larger than requested");
  require(page.pixels.size() == static_cast<std::size_t>(page.columns) * static_cast<std::size_t>(page.rows),
          "a picture is whole");
  require(std::isfinite(page.width) && page.width > 0 && std::isfinite(page.height) && page.height > 0,
          "a page has a size");
  if (!page.empty) return;
  const auto& [top, bottom, left, right] = *page.empty;
  require(top >= 0 && bottom >= 0 && left >= 0 && right >= 0 && top + bottom <= page.height &&
              left + right <= page.width,
          "content is on its page");
}

FileDescriptor documentOf(std::string_view input) {
  FileDescriptor document(memfd_create("document", MFD_CLOEXEC));
  require(write(document.get(), input.data(), input.size()) == static_cast<ssize_t>(input.size()),
          "there is memory for the input");
  return document;
}

}  // namespace

void examine(std::string_view input) {
  if (const auto page = pageIn(std::as_bytes(std::span(input)), kLongestSide)) requirePage(*page);
  const auto begin = std::chrono::steady_clock::now();
  try {
    const PageRequest request{.program = PAGE_PROGRAM, .longestSide = kLongestSide, .limit = kLimit};
    if (const auto page = readPage(documentOf(input), request)) requirePage(*page);
  } catch (const Failure& failure) {
    const std::string_view reason = failure.what();
    require(reason.starts_with("the document's page is not shown: it"),
            "a page that is not shown has a reason");
  }
  require(std::chrono::steady_clock::now() - begin < kLimit + kLate, "a page takes no longer than its limit");
}

}  // namespace tandemtrim::fuzz
