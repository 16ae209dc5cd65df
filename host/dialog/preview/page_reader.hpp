#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// Lengths at the edges of a page or a sheet, in millimetres.
struct Edges {
  double top;
  double bottom;
  double left;
  double right;

  friend bool operator==(const Edges&, const Edges&) = default;
};

/// A page of a document as it is printed. Its size is in millimetres, that of its picture in pixels, each
/// 0x__RRGGBB, row by row.
struct RenderedPage {
  /// Of the document.
  int pages;
  double width;
  double height;
  /// How much is empty at each edge; none where all of the page is.
  std::optional<Edges> empty;
  /// The largest among the longer sides of all of the document's pages, and among the shorter ones.
  double longest;
  double broadest;
  int columns;
  int rows;
  std::vector<std::uint32_t> pixels;
};

/// How a page is asked for.
struct PageRequest {
  /// The program that renders it.
  std::string program;
  /// From 1 on.
  int page = 1;
  /// Of the picture, in pixels.
  int longestSide = 480;
  std::chrono::milliseconds limit{5000};
  /// Asked while the program is at work, which ends as soon as nobody wants the page.
  std::function<bool()> isWanted = [] { return true; };
};

/// What a program that renders a page answered; none where that is no page with such a picture.
std::optional<RenderedPage> pageIn(std::span<const std::byte> answer, int longestSide);

/// The page of the document in this file, which a process of its own reads; none where the document ends
/// before it. It takes as long as the limit at most. Failure, with the reason, when there is no such
/// document.
std::optional<RenderedPage> readPage(FileDescriptor document, const PageRequest& request);

}  // namespace tandemtrim::host
