#include "view/sheet.hpp"

#include <algorithm>
#include <cmath>

namespace tandemtrim {
namespace {

// Space for an arrow: above the paper, and on both sides of it so that the paper is centred.
constexpr double kArrowSpace = 22;
constexpr double kArrowGap = 5;
// Space for the shadow below the paper.
constexpr double kShadowSpace = 4;
// In millimetres: content that ends at a margin may seem to reach into it by this much, since paper sizes are
// rounded to whole points.
constexpr double kRounding = 0.1;
// The share of the printable width that the print takes; the rest shows its position.
constexpr double kPrintWidth = 0.55;

Rectangle paperIn(const Sheet& sheet, double width, double height) {
  const double roomAcross = width - 2 * kArrowSpace;
  const double roomDown = height - kArrowSpace - kShadowSpace;
  const double scale = std::max(0.0, std::min(roomAcross / sheet.width, roomDown / sheet.height));
  const double across = sheet.width * scale;
  const double down = sheet.height * scale;
  return {(width - across) / 2, kArrowSpace + (roomDown - down) / 2, across, down};
}

Rectangle printOn(const Rectangle& printable, Position position) {
  const double width = printable.width * kPrintWidth;
  const double room = printable.width - width;
  const double before = position == Position::left ? 0 : position == Position::center ? room / 2 : room;
  return {printable.x + before, printable.y, width, printable.height};
}

Rectangle pageOn(const Rectangle& paper, const SheetPage& page, double scale) {
  return {paper.x + page.left * scale, paper.y + page.top * scale, page.width * scale, page.height * scale};
}

// The arrow starts at the top edge if that is the leading edge, else at the left one.
Arrow arrowFrom(const Rectangle& paper, Feed feed) {
  const bool topIsLong = paper.width >= paper.height;
  if (topIsLong == (feed == Feed::longEdge)) {
    const double middle = paper.x + paper.width / 2;
    return {{middle, paper.y - kArrowGap}, {middle, paper.y - kArrowSpace}};
  }
  const double middle = paper.y + paper.height / 2;
  return {{paper.x - kArrowGap, middle}, {paper.x - kArrowSpace, middle}};
}

}  // namespace

SheetLayout layOut(const Sheet& sheet, double width, double height) {
  SheetLayout layout;
  const auto paper = layout.paper = paperIn(sheet, width, height);
  const double scale = paper.width / sheet.width;
  const auto upTo = [&](double millimetres, double room) {
    return std::clamp(millimetres * scale, 0.0, room);
  };
  const double top = upTo(sheet.top, paper.height);
  const double bottom = upTo(sheet.bottom, paper.height - top);
  const double left = upTo(sheet.left, paper.width);
  const double right = upTo(sheet.right, paper.width - left);

  const auto& inside = layout.printable = {paper.x + left, paper.y + top, paper.width - left - right,
                                           paper.height - top - bottom};
  layout.margins = {{{paper.x, paper.y, paper.width, top},
                     {paper.x, inside.y + inside.height, paper.width, bottom},
                     {paper.x, inside.y, left, inside.height},
                     {inside.x + inside.width, inside.y, right, inside.height}}};
  if (sheet.position) layout.print = printOn(inside, *sheet.position);
  if (sheet.page) layout.page = pageOn(paper, *sheet.page, scale);
  if (sheet.feed) layout.feed = arrowFrom(paper, *sheet.feed);
  return layout;
}

std::array<long, 4> contentInMargins(const Sheet& sheet) {
  std::array<long, 4> depths{};
  if (!sheet.page || !sheet.page->empty) return depths;
  const auto& page = *sheet.page;
  const auto& empty = *page.empty;
  // Distances from the sheet's edges to the content.
  const double top = page.top + empty[0];
  const double bottom = sheet.height - page.top - page.height + empty[1];
  const double left = page.left + empty[2];
  const double right = sheet.width - page.left - page.width + empty[3];
  // The content lies between `before` and `extent - behind`, measured from the sheet's edge at the margin.
  const auto depth = [](double margin, double before, double behind, double extent) {
    return std::max(0L, std::lround(std::ceil(std::min(margin, extent - behind) - before - kRounding)));
  };
  return {depth(sheet.top, top, bottom, sheet.height), depth(sheet.bottom, bottom, top, sheet.height),
          depth(sheet.left, left, right, sheet.width), depth(sheet.right, right, left, sheet.width)};
}

}  // namespace tandemtrim
