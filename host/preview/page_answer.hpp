#pragma once

#include <cstdint>

namespace tandemtrim::host {

/// The answer of the program that renders a page, on its standard output and in this machine's byte order:
/// this, then `height` rows of `width` pixels, each a number 0x__RRGGBB of 32 bits. Lengths are in
/// millimetres.
struct PageAnswer {
  static constexpr std::uint32_t kMark = 0x54545031;

  std::uint32_t mark = kMark;
  /// How many pages the document has.
  std::uint32_t pages = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  /// The page as a reader sees it: its crop box, rotated.
  double pageWidth = 0;
  double pageHeight = 0;
  /// From each edge of the page to its content; all are -1 on an empty page.
  double emptyTop = -1;
  double emptyBottom = -1;
  double emptyLeft = -1;
  double emptyRight = -1;
  /// The largest of the longer sides of all pages, and the largest of the shorter ones.
  double longest = 0;
  double broadest = 0;
};
static_assert(sizeof(PageAnswer) == 80);

/// The exit status of that program.
enum class PageStatus : int {
  rendered = 0,
  /// The command line is wrong, a limit cannot be set, or the answer cannot be written.
  notStarted = 2,
  /// Not a regular file, or not a PDF file that can be read.
  broken = 3,
  /// A password is needed.
  locked = 4,
  noSuchPage = 5,
};

}  // namespace tandemtrim::host
