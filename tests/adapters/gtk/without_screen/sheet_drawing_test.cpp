#include "adapters/gtk/sheet_drawing.hpp"

#include <array>
#include <cstdlib>
#include <ostream>

#include <cairomm/surface.h>
#include <gtest/gtest.h>

namespace tandemtrim::platform::gtk {
namespace {

constexpr int kBackground = 200;

struct Pixel {
  int red;
  int green;
  int blue;

  // Equal but for rounding.
  friend bool operator==(const Pixel& one, const Pixel& other) {
    const auto isNear = [](int left, int right) { return std::abs(left - right) <= 2; };
    return isNear(one.red, other.red) && isNear(one.green, other.green) && isNear(one.blue, other.blue);
  }
  friend std::ostream& operator<<(std::ostream& out, const Pixel& pixel) {
    return out << pixel.red << ' ' << pixel.green << ' ' << pixel.blue;
  }
};

constexpr Pixel grey(int value) { return {value, value, value}; }

constexpr Pixel kNothing = grey(kBackground);
constexpr Pixel kWhite = grey(255);
// Black with an opacity of 0.15 on the background, and with one of 0.4 on the paper.
constexpr Pixel kShadow = grey(170);
constexpr Pixel kLine = grey(153);
constexpr Pixel kTint{255, 0, 0};
constexpr Pixel kPaleTint{255, 166, 166};
constexpr Pixel kInk{0, 0, 255};

// A grey canvas on which a sheet is drawn. Pixels are named by column and row.
class Canvas {
 public:
  explicit Canvas(const SheetLayout& layout, const PageImage* page = nullptr, double opacity = 1) {
    constexpr double kPart = kBackground / 255.0;
    const auto cairo = Cairo::Context::create(surface_);
    cairo->set_source_rgb(kPart, kPart, kPart);
    cairo->paint();
    drawSheet(*cairo, layout, page, {Gdk::RGBA("blue"), Gdk::RGBA("red"), opacity});
    surface_->flush();
  }

  [[nodiscard]] Pixel at(int x, int y) const {
    const auto* const row = surface_->get_data() + static_cast<std::ptrdiff_t>(y) * surface_->get_stride();
    const auto pixel = reinterpret_cast<const std::uint32_t*>(row)[x];
    const auto part = [pixel](unsigned shift) { return static_cast<int>(pixel >> shift & 0xFFU); };
    return {part(16), part(8), part(0)};
  }

 private:
  static constexpr int kSize = 100;

  Cairo::RefPtr<Cairo::ImageSurface> surface_ =
      Cairo::ImageSurface::create(Cairo::Surface::Format::RGB24, kSize, kSize);
};

// The paper has the columns 20 to 59 and the rows 20 to 79.
SheetLayout onPaper() {
  SheetLayout layout;
  layout.paper = {20, 20, 40, 60};
  return layout;
}

TEST(ASheet, IsWhitePaperWithinAThinOutline) {
  const Canvas canvas(onPaper());
  for (const auto& [x, y] : {std::pair{20, 20}, {20, 50}, {59, 50}, {40, 20}, {40, 79}, {59, 79}})
    EXPECT_EQ(canvas.at(x, y), kLine) << x << ' ' << y;
  for (const auto& [x, y] : {std::pair{21, 21}, {40, 50}, {58, 78}})
    EXPECT_EQ(canvas.at(x, y), kWhite) << x << ' ' << y;
  for (const auto& [x, y] : {std::pair{19, 50}, {40, 19}})
    EXPECT_EQ(canvas.at(x, y), kNothing) << x << ' ' << y;
}

TEST(ASheet, ThrowsAShadowToTheRightAndBelow) {
  const Canvas canvas(onPaper());
  for (const auto& [x, y] : {std::pair{60, 22}, {61, 50}, {61, 81}, {22, 80}, {40, 81}})
    EXPECT_EQ(canvas.at(x, y), kShadow) << x << ' ' << y;
  for (const auto& [x, y] : {std::pair{60, 21}, {62, 50}, {21, 80}, {40, 82}})
    EXPECT_EQ(canvas.at(x, y), kNothing) << x << ' ' << y;
}

TEST(ASheet, HasTintedMarginsAroundAnOutlinedPrintablePart) {
  auto layout = onPaper();
  layout.margins = {{{20, 20, 40, 8}, {20, 70, 40, 10}, {20, 28, 6, 42}, {50, 28, 10, 42}}};
  layout.printable = {26, 28, 24, 42};
  const Canvas canvas(layout);
  for (const auto& [x, y] : {std::pair{40, 24}, {40, 75}, {23, 50}, {55, 50}})
    EXPECT_EQ(canvas.at(x, y), kPaleTint) << x << ' ' << y;
  for (const auto& [x, y] : {std::pair{26, 28}, {40, 28}, {40, 69}, {26, 50}, {49, 50}})
    EXPECT_EQ(canvas.at(x, y), kTint) << x << ' ' << y;
  for (const auto& [x, y] : {std::pair{27, 29}, {40, 50}, {48, 68}})
    EXPECT_EQ(canvas.at(x, y), kWhite) << x << ' ' << y;
}

TEST(ASheet, OutlinesNoPrintablePartThatIsThinnerThanALine) {
  for (const auto& [part, expected] : {std::pair{Rectangle{30, 30, 0.5, 20}, kWhite},
                                       {{30, 30, 20, 0.5}, kWhite},
                                       {{30, 30, 1, 20}, kTint},
                                       {{30, 30, 20, 1}, kTint}}) {
    auto layout = onPaper();
    layout.printable = part;
    const bool isTall = part.height > part.width;
    EXPECT_EQ(Canvas(layout).at(isTall ? 30 : 40, isTall ? 40 : 30), expected)
        << part.width << " x " << part.height;
  }
}

// Five lines fit; the last is as long as the first.
TEST(ASheet, HasLinesLikeParagraphsWhereItIsPrinted) {
  auto layout = onPaper();
  layout.print = {30, 30, 20, 42};
  const Canvas canvas(layout);
  struct Line {
    int y;
    int lastColumn;
  };
  for (const auto& [y, lastColumn] : {Line{37, 49}, {44, 47}, {51, 48}, {58, 41}, {65, 49}}) {
    for (const int row : {y, y + 1}) {
      EXPECT_EQ(canvas.at(30, row), kLine) << row;
      EXPECT_EQ(canvas.at(lastColumn, row), kLine) << row;
      EXPECT_EQ(canvas.at(lastColumn + 2, row), kWhite) << row;
      EXPECT_EQ(canvas.at(29, row), kWhite) << row;
    }
    EXPECT_EQ(canvas.at(35, y - 1), kWhite) << y;
    EXPECT_EQ(canvas.at(35, y + 2), kWhite) << y;
  }
  EXPECT_EQ(canvas.at(35, 30), kWhite);
  EXPECT_EQ(canvas.at(35, 72), kWhite);
}

// A page of four colours: red and green above blue and yellow.
PageImage page() {
  constexpr int kColumns = 20;
  constexpr int kRows = 30;
  PageImage image{kColumns, kRows, {}, 0, 0, 0, 0, std::nullopt, {}};
  for (int row = 0; row < kRows; ++row) {
    const auto [left, right] =
        row < kRows / 2 ? std::pair{0xFF0000U, 0x00FF00U} : std::pair{0x0000FFU, 0xFFFF00U};
    for (int column = 0; column < kColumns; ++column)
      image.pixels.push_back(column < kColumns / 2 ? left : right);
  }
  return image;
}

TEST(ASheet, ShowsThePageInItsPlaceInsteadOfLines) {
  auto layout = onPaper();
  layout.page = {20, 20, 40, 60};
  layout.print = {30, 40, 20, 30};
  const auto image = page();
  const Canvas canvas(layout, &image);
  for (const auto& [x, y] : {std::pair{21, 30}, {30, 21}, {37, 47}})
    EXPECT_EQ(canvas.at(x, y), (Pixel{255, 0, 0}));
  for (const auto& [x, y] : {std::pair{56, 23}, {42, 47}}) EXPECT_EQ(canvas.at(x, y), (Pixel{0, 255, 0}));
  for (const auto& [x, y] : {std::pair{23, 76}, {37, 52}}) EXPECT_EQ(canvas.at(x, y), (Pixel{0, 0, 255}));
  for (const auto& [x, y] : {std::pair{56, 76}, {42, 52}}) EXPECT_EQ(canvas.at(x, y), (Pixel{255, 255, 0}));
}

TEST(ASheet, ShowsNothingOfThePageBesideThePaper) {
  auto layout = onPaper();
  layout.page = {0, 0, 100, 100};
  const auto image = page();
  const Canvas canvas(layout, &image);
  for (const auto& [x, y] : {std::pair{10, 40}, {40, 10}, {70, 10}, {10, 90}})
    EXPECT_EQ(canvas.at(x, y), kNothing) << x << ' ' << y;
  EXPECT_EQ(canvas.at(25, 25), (Pixel{255, 0, 0}));
}

TEST(ASheet, ShowsLinesIfThePageOrItsPlaceIsMissing) {
  auto layout = onPaper();
  layout.print = {30, 30, 20, 42};
  const auto image = page();
  EXPECT_EQ(Canvas(layout, &image).at(30, 37), kLine);
  layout.page = {20, 20, 40, 60};
  EXPECT_EQ(Canvas(layout, nullptr).at(30, 37), kLine);
}

TEST(ASheet, IsCompleteExceptForAPageWithoutExtent) {
  for (const auto& place : {Rectangle{30, 30, 0, 20}, {30, 30, 20, 0}}) {
    auto layout = onPaper();
    layout.page = place;
    const auto image = page();
    const Canvas canvas(layout, &image);
    EXPECT_EQ(canvas.at(30, 30), kWhite);
    EXPECT_EQ(canvas.at(20, 50), kLine);
  }
}

TEST(ASheet, ShowsThePositionOnAPageAsABar) {
  const PageImage blank{1, 1, {0xFFFFFF}, 0, 0, 0, 0, std::nullopt, {}};
  for (const double height : {20.0, 3.0, 2.0}) {
    auto layout = onPaper();
    // Larger than the paper, as the edges of a page fade.
    layout.page = {0, 0, 100, 100};
    layout.print = {30, 30, 20, height};
    const Canvas canvas(layout, &blank);
    for (const int x : {30, 49}) {
      EXPECT_EQ(canvas.at(x, 30), kTint) << height;
      EXPECT_EQ(canvas.at(x, 31), kTint) << height;
      EXPECT_EQ(canvas.at(x, 32), height < 3 ? kWhite : kTint) << height;
      EXPECT_EQ(canvas.at(x, 33), kWhite) << height;
    }
    for (const int x : {29, 50}) EXPECT_EQ(canvas.at(x, 31), kWhite);
    EXPECT_EQ(canvas.at(40, 29), kWhite);
  }
}

TEST(ASheet, HasAnArrowThatPointsInTheDirectionOfItsFeed) {
  auto layout = onPaper();
  layout.feed = {{40, 15}, {40, 2}};
  const Canvas up(layout);
  layout.feed = {{15, 40}, {2, 40}};
  const Canvas left(layout);
  const auto expect = [&](int along, int across, Pixel expected) {
    EXPECT_EQ(up.at(across, along), expected) << along << ' ' << across;
    EXPECT_EQ(left.at(along, across), expected) << along << ' ' << across;
  };
  // The tip.
  for (const int across : {39, 40}) {
    expect(1, across, kNothing);
    expect(4, across, kInk);
  }
  for (const int across : {36, 43}) expect(4, across, kNothing);
  // The barbs.
  for (const int across : {36, 43}) {
    expect(8, across, kInk);
    expect(9, across, kNothing);
  }
  for (const int across : {34, 45}) expect(8, across, kNothing);
  // The line.
  for (const int across : {39, 40}) {
    expect(9, across, kInk);
    expect(14, across, kInk);
    expect(15, across, kNothing);
  }
  for (const int across : {38, 41}) expect(12, across, kNothing);
}

TEST(ASheet, IsDrawnWithTheOpacityOfItsColours) {
  const Canvas canvas(onPaper(), nullptr, 0.5);
  EXPECT_EQ(canvas.at(40, 50), grey((kBackground + 255) / 2));
  EXPECT_EQ(canvas.at(10, 10), kNothing);
}

}  // namespace
}  // namespace tandemtrim::platform::gtk
