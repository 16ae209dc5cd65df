#include "host/dialog/preview/placement.hpp"

#include <algorithm>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

constexpr SheetSize kA4{210, 297, 202, 289};
constexpr SheetSize kLandscape{297, 210, 289, 202};

// Of three by two pixels, from 1 to 6.
RenderedPage pageOf(double width, double height) {
  return {1, width, height, Edges{10, 20, 30, 40}, 3, 2, {1, 2, 3, 4, 5, 6}};
}

void expectEmptyEdges(const platform::PageImage& image, const std::array<double, 4>& expected) {
  ASSERT_TRUE(image.empty);
  for (std::size_t edge = 0; edge < expected.size(); ++edge)
    EXPECT_NEAR(image.empty->at(edge), expected.at(edge), 1e-9) << edge;
}

TEST(APageOnItsSheet, HasItsOwnSizeWhereThereIsRoom) {
  for (const auto& [width, height] : {std::pair{210.0, 297.0}, {210.7, 297.9}, {100.0, 150.0}}) {
    const auto image = placed(pageOf(width, height), kA4);
    EXPECT_EQ(image->width, width);
    EXPECT_EQ(image->height, height);
    EXPECT_EQ(image->columns, 3);
    EXPECT_EQ(image->rows, 2);
    EXPECT_THAT(image->pixels, testing::ElementsAre(1, 2, 3, 4, 5, 6));
    expectEmptyEdges(*image, {10, 20, 30, 40});
  }
}

TEST(APageOnItsSheet, IsTurnedToTheLeftWhereItIsOfTheOtherOrientation) {
  for (const auto& [page, sheet] :
       {std::pair{pageOf(297, 210), kA4}, {pageOf(150, 100), kA4}, {pageOf(210, 297), kLandscape}}) {
    const auto image = placed(page, sheet);
    EXPECT_EQ(image->width, page.height);
    EXPECT_EQ(image->height, page.width);
    EXPECT_EQ(image->columns, 2);
    EXPECT_EQ(image->rows, 3);
    EXPECT_THAT(image->pixels, testing::ElementsAre(3, 6, 2, 5, 1, 4));
    // Its right edge is at the top, its upper one on the left.
    expectEmptyEdges(*image, {40, 30, 10, 20});
  }
}

TEST(APageOnItsSheet, IsReducedToWhatIsPrintableWhereTheSheetIsTooSmall) {
  const auto image = placed(pageOf(404, 100'000), kA4);
  EXPECT_NEAR(image->height, 289, 1e-9);
  const auto wide = placed(pageOf(404, 500), kA4);
  EXPECT_NEAR(wide->width, 202, 1e-9);
  EXPECT_NEAR(wide->height, 250, 1e-9);
  expectEmptyEdges(*wide, {5, 10, 15, 20});
}

TEST(APageOnItsSheet, MayBeEmpty) {
  auto page = pageOf(297, 210);
  page.empty.reset();
  EXPECT_FALSE(placed(page, kA4)->empty);
}

TEST(APageOnItsSheet, IsAloneThereUnlessAnOptionLaysPagesOut) {
  EXPECT_TRUE(isPageOnItsSheet({}));
  EXPECT_TRUE(isPageOnItsSheet({{"number-up", "1"},
                                {"print-scaling", "auto"},
                                {"mirror", "False"},
                                {"media", "A4"},
                                {"copies", "2"}}));
  for (const Option& option : {Option{"number-up", "2"},
                               {"Number-Up", "16"},
                               {"print-scaling", "fill"},
                               {"scaling", "50"},
                               {"natural-scaling", "50"},
                               {"fit-to-page", "true"},
                               {"mirror", "true"},
                               {"landscape", "true"},
                               {"media-top-margin", "2000"},
                               {"position", "top"},
                               {"page-left", "36"},
                               {"page-border", "single"},
                               {"booklet", "on"},
                               {"MirrorPrint", "True"},
                               {"ipp-attribute-fidelity", "true"},
                               {"page-label", "Draft"},
                               {"pdfAutorotate", "false"},
                               {"pdftopdfAutoRotate", "false"}})
    EXPECT_FALSE(isPageOnItsSheet({{"media", "A4"}, option})) << option.keyword;
}

}  // namespace
}  // namespace tandemtrim::host
