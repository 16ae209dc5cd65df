#include "view/sheet.hpp"

#include <array>
#include <numeric>
#include <ostream>

#include <gtest/gtest.h>

namespace tandemtrim {
namespace {

constexpr double kWidth = 190;
constexpr double kHeight = 236;

double area(const Rectangle& rectangle) { return rectangle.width * rectangle.height; }

TEST(SheetLayout, KeepsTheProportionsOfThePaper) {
  for (const auto& [width, height] :
       {std::pair{210.0, 297.0}, std::pair{297.0, 210.0}, std::pair{89.0, 89.0}, std::pair{2000.0, 20.0}}) {
    const auto layout = layOut({.width = width, .height = height}, kWidth, kHeight);
    EXPECT_NEAR(layout.paper.width / layout.paper.height, width / height, 1e-9);
    EXPECT_NEAR(layout.paper.x + layout.paper.width / 2, kWidth / 2, 1e-9);
    EXPECT_GE(layout.paper.x, 0);
    EXPECT_LE(layout.paper.y + layout.paper.height, kHeight);
  }
}

// The arrow needs 22 pixels above the paper and on both sides, the shadow 4 below it.
TEST(SheetLayout, FillsTheRoomThatArrowAndShadowLeave) {
  const auto square = layOut({.width = 89, .height = 89}, kWidth, kHeight).paper;
  EXPECT_NEAR(square.x, 22, 1e-9);
  EXPECT_NEAR(square.width, 146, 1e-9);
  EXPECT_NEAR(square.y, 54, 1e-9);
  const auto tall = layOut({.width = 20, .height = 2000}, kWidth, kHeight).paper;
  EXPECT_NEAR(tall.y, 22, 1e-9);
  EXPECT_NEAR(tall.height, 210, 1e-9);
}

TEST(SheetLayout, ShowsA4WithoutMarginsByDefault) {
  const auto layout = layOut({}, kWidth, kHeight);
  EXPECT_NEAR(layout.paper.width / layout.paper.height, 210.0 / 297.0, 1e-9);
  for (const auto& margin : layout.margins) EXPECT_EQ(area(margin), 0);
  EXPECT_EQ(area(layout.printable), area(layout.paper));
}

TEST(SheetLayout, GivesEachMarginItsShareOfThePaper) {
  const auto layout = layOut({.width = 200, .height = 400, .top = 40, .bottom = 20, .left = 10, .right = 50},
                             kWidth, kHeight);
  const auto& [top, bottom, left, right] = layout.margins;
  EXPECT_NEAR(top.height / layout.paper.height, 0.1, 1e-9);
  EXPECT_NEAR(bottom.height / layout.paper.height, 0.05, 1e-9);
  EXPECT_NEAR(left.width / layout.paper.width, 0.05, 1e-9);
  EXPECT_NEAR(right.width / layout.paper.width, 0.25, 1e-9);
  EXPECT_EQ(top.y, layout.paper.y);
  EXPECT_NEAR(bottom.y + bottom.height, layout.paper.y + layout.paper.height, 1e-9);
  EXPECT_EQ(left.x, layout.paper.x);
  EXPECT_NEAR(right.x + right.width, layout.paper.x + layout.paper.width, 1e-9);
}

TEST(SheetLayout, CoversThePaperWithMarginsAndPrintablePartOnce) {
  for (const double margin : {0.0, 5.0, 150.0, 777.0, -3.0}) {
    const auto layout = layOut({.top = margin, .bottom = 7, .left = margin, .right = 9}, kWidth, kHeight);
    const double margins =
        std::accumulate(layout.margins.begin(), layout.margins.end(), 0.0,
                        [](double sum, const Rectangle& rectangle) { return sum + area(rectangle); });
    EXPECT_NEAR(margins + area(layout.printable), area(layout.paper), 1e-6) << margin;
    EXPECT_GE(layout.printable.width, 0) << margin;
    EXPECT_GE(layout.printable.height, 0) << margin;
  }
}

TEST(SheetLayout, PutsThePrintWhereThePositionSays) {
  const auto printAt = [](Position position) {
    return layOut({.left = 5, .right = 15, .position = position}, kWidth, kHeight);
  };
  const auto left = printAt(Position::left);
  EXPECT_EQ(left.print->x, left.printable.x);
  const auto right = printAt(Position::right);
  EXPECT_NEAR(right.print->x + right.print->width, right.printable.x + right.printable.width, 1e-9);
  const auto center = printAt(Position::center);
  EXPECT_NEAR(center.print->x + center.print->width / 2, center.printable.x + center.printable.width / 2,
              1e-9);
  EXPECT_NEAR(center.print->width / center.printable.width, 0.55, 1e-9);
  EXPECT_FALSE(layOut({}, kWidth, kHeight).print);
}

TEST(SheetLayout, PutsThePageInItsPlaceToTheScaleOfThePaper) {
  for (const auto& expected : {SheetPage{0, 0, 210, 297}, {55, 70, 100, 150}, {-45, 3, 300, 10}}) {
    const auto layout = layOut({.page = expected}, kWidth, kHeight);
    const auto& [paper, page] = std::pair{layout.paper, layout.page.value()};
    EXPECT_NEAR(page.width / paper.width, expected.width / 210, 1e-9);
    EXPECT_NEAR(page.height / paper.height, expected.height / 297, 1e-9);
    EXPECT_NEAR((page.x - paper.x) / paper.width, expected.left / 210, 1e-9);
    EXPECT_NEAR((page.y - paper.y) / paper.height, expected.top / 297, 1e-9);
  }
  EXPECT_FALSE(layOut({}, kWidth, kHeight).page);
}

// A page of 190 x 257 mm, 10 mm from the left and 20 mm from the top of the paper.
Sheet withContent(std::array<double, 4> margins) {
  const auto& [top, bottom, left, right] = margins;
  return {.top = top,
          .bottom = bottom,
          .left = left,
          .right = right,
          .page = SheetPage{10, 20, 190, 257, std::array{1.0, 2.0, 3.0, 4.0}}};
}

TEST(ContentInMargins, HasADepthInEachMargin) {
  using Depths = std::array<long, 4>;
  EXPECT_EQ(contentInMargins(withContent({0, 0, 0, 0})), (Depths{0, 0, 0, 0}));
  EXPECT_EQ(contentInMargins(withContent({21, 22, 13, 14})), (Depths{0, 0, 0, 0}));
  EXPECT_EQ(contentInMargins(withContent({22, 24, 16, 18})), (Depths{1, 2, 3, 4}));
}

TEST(ContentInMargins, IsRoundedUpToWholeMillimetres) {
  for (const auto& [margin, depth] : {std::pair{21.0, 0}, {21.2, 1}, {22.0, 1}, {22.3, 2}, {24.0, 3}})
    EXPECT_EQ(contentInMargins(withContent({margin, 0, 0, 0})).at(0), depth) << margin;
}

// A page of 595 x 842 points on a sheet of 210 x 297 mm begins up to 0.05 mm from the sheet's edges.
TEST(ContentInMargins, IsZeroForAPageThatEndsAtThem) {
  for (const double difference : {0.09, -0.09}) {
    auto sheet = withContent({21, 22, 13, 14});
    sheet.width += difference;
    sheet.height += difference;
    sheet.page->left += difference / 2;
    sheet.page->top += difference / 2;
    EXPECT_EQ(contentInMargins(sheet), (std::array<long, 4>{})) << difference;
  }
}

TEST(ContentInMargins, IsNoDeeperThanThereIsContent) {
  using Depths = std::array<long, 4>;
  EXPECT_EQ(contentInMargins(withContent({999, 999, 999, 999})), (Depths{254, 254, 183, 183}));
}

TEST(ContentInMargins, IsZeroWithoutAPageOrContent) {
  auto sheet = withContent({99, 99, 99, 99});
  sheet.page->empty.reset();
  EXPECT_EQ(contentInMargins(sheet), (std::array<long, 4>{}));
  sheet.page.reset();
  EXPECT_EQ(contentInMargins(sheet), (std::array<long, 4>{}));
}

TEST(SheetLayout, PointsTheArrowAheadOfTheChosenEdge) {
  const auto goesUp = [](double width, double height, Feed feed) {
    const auto layout = layOut({.width = width, .height = height, .feed = feed}, kWidth, kHeight);
    const auto& [tail, head] = *layout.feed;
    const bool up = head.y < tail.y && head.x == tail.x && tail.y < layout.paper.y;
    const bool left = head.x < tail.x && head.y == tail.y && tail.x < layout.paper.x;
    EXPECT_NE(up, left);
    const auto& paper = layout.paper;
    EXPECT_NEAR(up ? tail.x : tail.y, up ? paper.x + paper.width / 2 : paper.y + paper.height / 2, 1e-9);
    EXPECT_NEAR(up ? paper.y - tail.y : paper.x - tail.x, 5, 1e-9);
    EXPECT_NEAR(up ? paper.y - head.y : paper.x - head.x, 22, 1e-9);
    return up;
  };
  EXPECT_TRUE(goesUp(210, 297, Feed::shortEdge));
  EXPECT_FALSE(goesUp(210, 297, Feed::longEdge));
  EXPECT_FALSE(goesUp(297, 210, Feed::shortEdge));
  EXPECT_TRUE(goesUp(297, 210, Feed::longEdge));
  EXPECT_TRUE(goesUp(89, 89, Feed::longEdge));
  EXPECT_FALSE(layOut({}, kWidth, kHeight).feed);
}

TEST(SheetLayout, HasNothingToShowWhereThereIsNoRoom) {
  const auto layout = layOut({.top = 5, .position = Position::left}, 10, 10);
  EXPECT_EQ(area(layout.paper), 0);
  EXPECT_EQ(area(layout.printable), 0);
}

}  // namespace
}  // namespace tandemtrim
