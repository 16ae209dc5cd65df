#include "host/dialog/preview/placement.hpp"

#include <algorithm>

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

constexpr PaperSheet kA4{210, 297, Edges{5, 15, 6, 14}, false};
constexpr PaperSheet kLandscape{297, 210, Edges{5, 15, 6, 14}, false};

// The only page of its document, in three by two pixels with the values 1 to 6.
RenderedPage pageOf(double width, double height) {
  return {1,
          width,
          height,
          Edges{10, 20, 30, 40},
          std::max(width, height),
          std::min(width, height),
          3,
          2,
          {1, 2, 3, 4, 5, 6}};
}

using EmptyEdges = std::array<double, 4>;

void expectPlace(const platform::PageImage& image, double left, double top, double width, double height,
                 const EmptyEdges& empty) {
  EXPECT_NEAR(image.left, left, 1e-9);
  EXPECT_NEAR(image.top, top, 1e-9);
  EXPECT_NEAR(image.width, width, 1e-9);
  EXPECT_NEAR(image.height, height, 1e-9);
  ASSERT_TRUE(image.empty);
  for (std::size_t edge = 0; edge < empty.size(); ++edge)
    EXPECT_NEAR(image.empty->at(edge), empty.at(edge), 1e-9) << edge;
}

TEST(APageOnItsSheet, IsInTheMiddleInItsOwnSizeIfThereIsRoom) {
  for (const auto& [width, height] : {std::pair{210.0, 297.0}, {213.0, 302.0}, {100.0, 150.0}}) {
    const auto image = placed(pageOf(width, height), kA4);
    expectPlace(*image, (210 - width) / 2, (297 - height) / 2, width, height, {10, 20, 30, 40});
    EXPECT_EQ(image->columns, 3);
    EXPECT_EQ(image->rows, 2);
    EXPECT_THAT(image->pixels, testing::ElementsAre(1, 2, 3, 4, 5, 6));
  }
}

TEST(APageOnItsSheet, IsTurnedToTheLeftIfItsOrientationDiffersFromTheSheets) {
  for (const auto& [page, sheet] :
       {std::pair{pageOf(297, 210), kA4}, {pageOf(150, 100), kA4}, {pageOf(210, 297), kLandscape}}) {
    const auto image = placed(page, sheet);
    // Its right edge is at the top, its upper one on the left.
    expectPlace(*image, (sheet.width - page.height) / 2, (sheet.height - page.width) / 2, page.height,
                page.width, {40, 30, 10, 20});
    EXPECT_EQ(image->columns, 2);
    EXPECT_EQ(image->rows, 3);
    EXPECT_THAT(image->pixels, testing::ElementsAre(3, 6, 2, 5, 1, 4));
  }
}

TEST(APageOnItsSheet, IsTurnedToTheRightIfThePrinterTurnsThatWay) {
  auto sheet = kA4;
  sheet.turnsRight = true;
  const auto image = placed(pageOf(297, 210), sheet);
  EXPECT_THAT(image->pixels, testing::ElementsAre(4, 1, 5, 2, 6, 3));
  expectPlace(*image, 0, 0, 210, 297, {30, 40, 20, 10});
  EXPECT_THAT(placed(pageOf(210, 297), sheet)->pixels, testing::ElementsAre(1, 2, 3, 4, 5, 6));
}

// The printable area is 190 x 277 mm, 6 mm from the left and 5 mm from the top.
TEST(APageOnItsSheet, IsFittedToThePrintableAreaIfTheSheetIsTooSmall) {
  expectPlace(*placed(pageOf(380, 400), kA4), 6, 5 + (277 - 200) / 2.0, 190, 200, {5, 10, 15, 20});
  expectPlace(*placed(pageOf(400, 554), kA4), 6, 5 + (277 - 554 * 0.475) / 2, 190, 554 * 0.475,
              {4.75, 9.5, 14.25, 19});
  const auto tall = placed(pageOf(100, 2770), kA4);
  expectPlace(*tall, 6 + (190 - 10) / 2.0, 5, 10, 277, {1, 2, 3, 4});
}

TEST(APageOnItsSheet, IsFittedIfAnotherPageOfItsDocumentIsTooLarge) {
  for (const auto& [longest, broadest] : {std::pair{420.0, 210.0}, {297.0, 250.0}, {304.0, 210.0}}) {
    auto page = pageOf(100, 150);
    page.longest = longest;
    page.broadest = broadest;
    const double factor = 277 / 150.0;
    expectPlace(*placed(page, kA4), 6 + (190 - 100 * factor) / 2, 5, 100 * factor, 277,
                {10 * factor, 20 * factor, 30 * factor, 40 * factor});
  }
  EXPECT_EQ(placed(pageOf(297, 150), kA4)->width, 150);
}

TEST(APageOnItsSheet, IsNotShownIfItIsCroppedOrItsPlaceIsUnknown) {
  for (const auto& edges :
       {std::optional<Edges>(), {Edges{}}, {Edges{200, 100, 5, 5}}, {Edges{5, 5, 110, 100}}}) {
    const PaperSheet sheet{210, 297, edges, false};
    EXPECT_FALSE(placed(pageOf(297, 420), sheet));
    EXPECT_TRUE(placed(pageOf(210, 297), sheet));
  }
}

TEST(APageOnItsSheet, MayBeEmpty) {
  auto page = pageOf(297, 210);
  page.empty.reset();
  EXPECT_FALSE(placed(page, kA4)->empty);
}

// The PPD of a printer with two papers; `more` may allow custom sizes.
PpdHandle ppdWithPapers(const std::string& more) {
  const test::TemporaryFolder folder;
  PpdHandle ppd(
      ppdOpenFile(folder
                      .write("papers.ppd",
                             "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*ModelName: \"Papers\"\n"
                             "*OpenUI *PageSize: PickOne\n*DefaultPageSize: A4\n*PageSize A4: \"\"\n"
                             "*PageSize Edge: \"\"\n*CloseUI: *PageSize\n"
                             "*ImageableArea A4: \"18 36 559 788\"\n*PaperDimension A4: \"595 842\"\n"
                             "*ImageableArea Edge: \"0 0 300 400\"\n*PaperDimension Edge: \"300 400\"\n" +
                                 more)
                      .c_str()));
  EXPECT_TRUE(ppd);
  return ppd;
}

TEST(UnprintableEdges, AreThoseOfThePpd) {
  const auto expectEdges = [](const std::optional<Edges>& edges, const EmptyEdges& points) {
    ASSERT_TRUE(edges);
    const auto& [top, bottom, left, right] = *edges;
    EXPECT_THAT(
        (EmptyEdges{top, bottom, left, right}),
        testing::Pointwise(testing::DoubleNear(1e-6), {points[0] * 25.4 / 72, points[1] * 25.4 / 72,
                                                       points[2] * 25.4 / 72, points[3] * 25.4 / 72}));
  };
  const auto ppd = ppdWithPapers("");
  expectEdges(unprintableEdges(ppd.get(), "A4"), {54, 36, 18, 36});
  EXPECT_EQ(unprintableEdges(ppd.get(), "Edge"), Edges{});
  EXPECT_FALSE(unprintableEdges(ppd.get(), "Custom.200x300"));
  EXPECT_FALSE(unprintableEdges(nullptr, "A4"));
  const auto anySize = ppdWithPapers(
      "*CustomPageSize True: \"pop\"\n*HWMargins: 10 20 30 40\n*ParamCustomPageSize Width: 1 points 36 999\n"
      "*ParamCustomPageSize Height: 2 points 36 999\n");
  expectEdges(unprintableEdges(anySize.get(), "Custom.200x300"), {40, 20, 10, 30});
}

// As in the print system, the upper edge of a turned sheet is on the left.
TEST(UnprintableEdges, AreTurnedWithTheSheet) { EXPECT_EQ(edgesAcross({1, 2, 3, 4}), (Edges{4, 3, 1, 2})); }

TEST(APageOnItsSheet, IsAloneUnlessAnOptionLaysPagesOut) {
  EXPECT_TRUE(isPageOnItsSheet({}));
  for (const Option& option : {Option{"number-up", "1"},
                               {"print-scaling", "auto"},
                               {"scaling", "100"},
                               {"natural-scaling", "100"},
                               {"fit-to-page", "false"},
                               {"mirror", "False"},
                               {"landscape", "false"},
                               {"position", "center"},
                               {"page-border", "none"},
                               {"booklet", "off"},
                               {"fitplot", "false"},
                               {"fill", "false"},
                               {"crop-to-fit", "false"},
                               {"imposition-template", "none"},
                               {"MirrorPrint", "false"},
                               {"ipp-attribute-fidelity", "false"},
                               {"pdfAutorotate", "true"},
                               {"pdftopdfAutoRotate", "true"},
                               {"copies", "2"}})
    EXPECT_TRUE(isPageOnItsSheet({{"media", "A4"}, option})) << option.keyword;
  for (const Option& option : {Option{"number-up", "2"},
                               {"Number-Up", "16"},
                               {"print-scaling", "fill"},
                               {"scaling", "50"},
                               {"natural-scaling", "50"},
                               {"fit-to-page", "true"},
                               {"mirror", "true"},
                               {"landscape", "true"},
                               {"media-top-margin", "2000"},
                               {"media-bottom-margin", "2000"},
                               {"media-left-margin", "2000"},
                               {"media-right-margin", "2000"},
                               {"page-right", "36"},
                               {"page-top", "36"},
                               {"page-bottom", "36"},
                               {"fitplot", "true"},
                               {"fill", "true"},
                               {"crop-to-fit", "true"},
                               {"imposition-template", "signature"},
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
