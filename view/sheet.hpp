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
  /// The width of the empty strip at its top, bottom, left and right; nullopt when all of it is empty.
  std::optional<std::array<double, 4>> empty = std::nullopt;
};

enum class Feed { longEdge, shortEdge };
enum class Position { left, center, right };

/// The panel's settings for a sheet of paper. Lengths are in millimetres; nullopt means that nothing is
/// chosen, or no page is shown.
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

/// The direction in which the sheet is fed, starting at its leading edge.
struct Arrow {
  Point tail;
  Point head;
};

/// Where each part of a sheet's picture is drawn.
struct SheetLayout {
  Rectangle paper;
  /// Top, bottom, left, right; together they cover the paper except its printable part, without overlap.
  std::array<Rectangle, 4> margins;
  Rectangle printable;
  std::optional<Rectangle> print;
  /// It may reach beyond the paper.
  std::optional<Rectangle> page;
  std::optional<Arrow> feed;
};

/// Lays the picture out to scale, as large as fits into an area of this size. Margins that do not fit on the
/// paper end at its far edge.
SheetLayout layOut(const Sheet& sheet, double width, double height);

/// How far the page's content reaches into each margin, in millimetres, rounded up: top, bottom, left, right.
/// A tenth of a millimetre is tolerated.
std::array<long, 4> contentInMargins(const Sheet& sheet);

}  // namespace tandemtrim
