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

/// A page of a document as it is printed: its size in millimetres, and its picture, row by row, with pixels
/// of the form 0x__RRGGBB.
struct RenderedPage {
  /// How many pages the document has.
  int pages;
  double width;
  double height;
  /// How much is empty at each edge; nullopt if the whole page is empty, or the answer's lengths do not fit
  /// the page.
  std::optional<Edges> empty;
  /// The largest of the longer sides of all pages, and the largest of the shorter ones.
  double longest;
  double broadest;
  int columns;
  int rows;
  std::vector<std::uint32_t> pixels;
};

/// A request for a page.
struct PageRequest {
  /// The program that renders it.
  std::string program;
  /// Counted from 1.
  int page = 1;
  /// Of the picture, in pixels.
  int longestSide = 480;
  std::chrono::milliseconds limit{5000};
  /// Called repeatedly while the program runs; false ends it.
  std::function<bool()> isWanted = [] { return true; };
};

/// The page in the answer of a program that renders one; nullopt if the answer is wrong, or its picture is
/// larger than `longestSide`.
std::optional<RenderedPage> pageIn(std::span<const std::byte> answer, int longestSide);

/// Renders the page of the document in this file in a separate process; nullopt if the document ends before
/// the page. Takes `request.limit` at most. Failure, with the reason, when the page cannot be rendered.
std::optional<RenderedPage> readPage(FileDescriptor document, const PageRequest& request);

}  // namespace tandemtrim::host
