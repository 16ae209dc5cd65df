#pragma once

#include <cstdint>

namespace tandemtrim::host {

/// What the program that renders a page answers on its standard output, in this machine's own form: this,
/// then `height` rows of `width` pixels, each a number 0x__RRGGBB of 32 bits. Lengths are millimetres.
struct PageAnswer {
  static constexpr std::uint32_t kMark = 0x54545031;

  std::uint32_t mark = kMark;
  /// Of the document.
  std::uint32_t pages = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  /// The page as it is read: its crop box, rotated.
  double pageWidth = 0;
  double pageHeight = 0;
  /// From each edge of the page to its content; all are -1 on a page without any.
  double emptyTop = -1;
  double emptyBottom = -1;
  double emptyLeft = -1;
  double emptyRight = -1;
  /// The largest among the longer sides of all of the document's pages, and among the shorter ones.
  double longest = 0;
  double broadest = 0;
};
static_assert(sizeof(PageAnswer) == 80);

/// The exit status of that program.
enum class PageStatus : int {
  rendered = 0,
  /// The command line is none of its own, or a limit cannot be set.
  notStarted = 2,
  /// Not a regular file, or not a PDF file that can be read.
  broken = 3,
  /// A password is needed.
  locked = 4,
  noSuchPage = 5,
};

}  // namespace tandemtrim::host
