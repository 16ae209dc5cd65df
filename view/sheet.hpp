#pragma once

#include <array>
#include <optional>

namespace tandemtrim {

/// A page on a sheet, in millimetres from the sheet's left and upper edge.
struct SheetPage {
  double left{};
  double top{};
  double width{};
  double height{};
  /// How much of it is empty at its top, bottom, left and right; none where all of it is.
  std::optional<std::array<double, 4>> empty = std::nullopt;
};

enum class Feed { longEdge, shortEdge };
enum class Position { left, center, right };

/// The panel's settings for a sheet of paper. Lengths are millimetres; none is a setting without a choice.
struct Sheet {
  double width = 210;
  double height = 297;
  double top = 0;
  double bottom = 0;
  double left = 0;
  double right = 0;
  std::optional<Feed> feed = std::nullopt;
  std::optional<Position> position = std::nullopt;
  std::optional<SheetPage> page = std::nullopt;
};

struct Rectangle {
  double x{};
  double y{};
  double width{};
  double height{};
};

struct Point {
  double x{};
  double y{};
};

/// From the edge that leads into the printer, the way that the sheet takes.
struct Arrow {
  Point tail;
  Point head;
};

/// Where the parts of a sheet's picture lie.
struct SheetLayout {
  Rectangle paper;
  /// Top, bottom, left, right; they cover the paper but for its printable part, and never each other.
  std::array<Rectangle, 4> margins;
  Rectangle printable;
  std::optional<Rectangle> print;
  /// It may reach beyond the paper.
  std::optional<Rectangle> page;
  std::optional<Arrow> feed;
};

/// The picture that fits best into an area of this size, to scale. Margins that do not fit on the paper end
/// at its far edge.
SheetLayout layOut(const Sheet& sheet, double width, double height);

/// By how many millimetres, rounded up, the page's content reaches into the margins: top, bottom, left,
/// right. Less than a tenth of one is none.
std::array<long, 4> contentInMargins(const Sheet& sheet);

}  // namespace tandemtrim
