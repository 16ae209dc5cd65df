#include "host/dialog/preview/page_reader.hpp"

#include <atomic>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>

#include "host/failure.hpp"
#include "host/preview/page_answer.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/preview/pdf.hpp"
#include "tests/support/temporary_folder.hpp"

/// Pages of real and of hostile documents, rendered by the program that the dialog starts.
namespace tandemtrim::host {
namespace {

using test::Bar;
using test::failureOf;
using test::pdfOf;
using test::pdfOfObjects;
using test::PdfPage;
using test::pdfStream;
using testing::HasSubstr;
using namespace std::chrono_literals;

// Millimetres per pixel of the picture in which content is measured, for an A4 page.
constexpr double kPixel = 0.15;
constexpr auto kSoon = 8s;

class RenderedPages : public testing::Test {
 protected:
  RenderedPage read(const std::string& document, int page = 1) {
    PageRequest request{.program = PAGE_PROGRAM, .page = page};
    return readPage(open(document), request).value();
  }
  FileDescriptor open(const std::string& document) const {
    return FileDescriptor(::open(folder_.write("document.pdf", document).c_str(), O_RDONLY | O_CLOEXEC));
  }
  std::string refusalOf(const std::string& document, int page = 1) {
    return failureOf([&] { static_cast<void>(read(document, page)); }).what();
  }

  const test::TemporaryFolder folder_;
};

bool isDark(const RenderedPage& page, double left, double top) {
  const auto column = static_cast<int>(left / page.width * page.columns);
  const auto row = static_cast<int>(top / page.height * page.rows);
  return (page.pixels.at(static_cast<std::size_t>(row * page.columns + column)) & 0xFF) < 128;
}

void expectEmpty(const RenderedPage& page, const Edges& expected) {
  ASSERT_TRUE(page.empty);
  const double pixel = kPixel * std::max(page.width, page.height) / 297;
  EXPECT_NEAR(page.empty->top, expected.top, pixel);
  EXPECT_NEAR(page.empty->bottom, expected.bottom, pixel);
  EXPECT_NEAR(page.empty->left, expected.left, pixel);
  EXPECT_NEAR(page.empty->right, expected.right, pixel);
}

TEST_F(RenderedPages, HaveTheirSizeInMillimetresAndAPictureOfItsProportions) {
  for (const auto& [width, height] :
       {std::pair{210.0, 297.0}, {297.0, 210.0}, {148.5, 105.0}, {2000.0, 50.0}}) {
    const auto page = read(pdfOf({PdfPage{.width = width, .height = height}}));
    EXPECT_NEAR(page.width, width, 0.01);
    EXPECT_NEAR(page.height, height, 0.01);
    EXPECT_EQ(std::max(page.columns, page.rows), 480);
    EXPECT_NEAR(page.columns * height / width, page.rows, std::max(1.0, height / width));
  }
}

TEST_F(RenderedPages, SayHowMuchIsEmptyAtEachEdge) {
  const auto page = read(pdfOf({PdfPage{.bars = {{3, 40, 20, 1}, {100, 200, 100, 90}, {60, 12, 5, 5}}}}));
  expectEmpty(page, {12, 7, 3, 10});
  EXPECT_TRUE(isDark(page, 150, 250));
  EXPECT_FALSE(isDark(page, 50, 250));
}

TEST_F(RenderedPages, AreMeasuredDownToAHairline) {
  expectEmpty(read(pdfOf({PdfPage{.bars = {{3, 4, 200, 0.1}, {100, 4, 0.1, 280}}}})), {4, 13, 3, 7});
}

// Where content ends within a pixel, the pixel's colour shows how far.
TEST_F(RenderedPages, AreMeasuredToAFiftiethOfAMillimetre) {
  for (const char* colour : {"", "0.8 0.2 0.2 rg ", "0.7 g "}) {
    for (const double from : {5.0, 4.9, 4.97, 12.34}) {
      const auto page =
          read(pdfOf({PdfPage{.bars = {{from, from, 210 - 2 * from, 297 - 2 * from}}, .content = colour}}));
      ASSERT_TRUE(page.empty) << colour << from;
      const auto& [top, bottom, left, right] = *page.empty;
      for (const double edge : {top, bottom, left, right}) EXPECT_NEAR(edge, from, 0.02) << colour;
    }
  }
}

TEST_F(RenderedPages, MayBeEmpty) {
  for (const char* content : {"", "1 1 1 rg 0 0 900 900 re f "})
    EXPECT_FALSE(read(pdfOf({PdfPage{.content = content}})).empty) << content;
}

TEST_F(RenderedPages, EndAtTheirCropBox) {
  const std::string box = "/CropBox[" + test::points(20) + ' ' + test::points(30) + ' ' + test::points(120) +
                          ' ' + test::points(180) + "]";
  // The box is 100 mm wide and 150 mm high; its upper edge is 117 mm below that of the page.
  const auto page = read(pdfOf({PdfPage{.bars = {{25, 127, 10, 10}, {0, 0, 210, 20}}, .entries = box}}));
  EXPECT_NEAR(page.width, 100, 0.01);
  EXPECT_NEAR(page.height, 150, 0.01);
  expectEmpty(page, {10, 130, 5, 85});
}

TEST_F(RenderedPages, AreRotatedAsTheDocumentSays) {
  // 3 mm from the left and 10 mm from the top of the page as it is written.
  const std::vector<Bar> bars{{3, 10, 20, 5}};
  const Edges upright{10, 282, 3, 187};
  const std::pair<int, Edges> rotations[]{{0, upright},
                                          {90, {upright.left, upright.right, upright.bottom, upright.top}},
                                          {180, {upright.bottom, upright.top, upright.right, upright.left}},
                                          {270, {upright.right, upright.left, upright.top, upright.bottom}}};
  for (const auto& [rotation, expected] : rotations) {
    SCOPED_TRACE(rotation);
    const auto page = read(pdfOf({PdfPage{.bars = bars, .entries = "/Rotate " + std::to_string(rotation)}}));
    EXPECT_NEAR(page.width, rotation % 180 == 0 ? 210 : 297, 0.01);
    expectEmpty(page, expected);
  }
}

TEST_F(RenderedPages, AreTheRequestedOnes) {
  const auto document =
      pdfOf({PdfPage{.bars = {{10, 10, 5, 5}}}, PdfPage{.width = 100, .bars = {{20, 20, 5, 5}}}});
  EXPECT_NEAR(read(document, 1).width, 210, 0.01);
  const auto second = read(document, 2);
  EXPECT_NEAR(second.width, 100, 0.01);
  EXPECT_EQ(second.pages, 2);
  EXPECT_NEAR(second.empty.value().top, 20, kPixel);
  for (const int beyond : {3, std::numeric_limits<int>::max()}) {
    const PageRequest request{.program = PAGE_PROGRAM, .page = beyond};
    EXPECT_FALSE(readPage(open(document), request)) << beyond;
  }
}

TEST_F(RenderedPages, SayTheLargestSizeAmongTheDocumentsPages) {
  const auto page =
      read(pdfOf({PdfPage{}, PdfPage{.width = 300, .height = 100}, PdfPage{.width = 250, .height = 260}}));
  EXPECT_NEAR(page.longest, 300, 0.01);
  EXPECT_NEAR(page.broadest, 250, 0.01);
  EXPECT_NEAR(page.width, 210, 0.01);
}

TEST_F(RenderedPages, ComeFromADocumentOfTenThousandPages) {
  const auto document = pdfOf(std::vector(10'000, PdfPage{.bars = {{10, 10, 5, 5}}}));
  EXPECT_EQ(read(document).pages, 10'000);
  EXPECT_NEAR(read(document, 10'000).empty.value().left, 10, kPixel);
}

TEST_F(RenderedPages, AreReducedHoweverLargeTheyAre) {
  const auto page =
      read(pdfOf({PdfPage{.width = 100'000, .height = 50'000, .bars = {{10'000, 5'000, 80'000, 40'000}}}}));
  EXPECT_NEAR(page.width, 100'000, 1);
  expectEmpty(page, {5'000, 5'000, 10'000, 10'000});
}

TEST_F(RenderedPages, NeedADocumentThatCanBeRead) {
  for (const auto& document : {std::string("no document"), std::string("%PDF-1.5\n"), std::string(),
                               pdfOf({PdfPage{}}).substr(0, 60), pdfOfObjects({"<</Type/Catalog>>"})})
    EXPECT_THAT(refusalOf(document), HasSubstr("the document's page is not shown: it ")) << document;
}

TEST_F(RenderedPages, NeedADocumentWithoutAPassword) {
  std::vector<std::string> objects{
      "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]>>",
      "<</Filter/Standard/V 1/R 2/P -4/O<" + std::string(64, '1') + ">/U<" + std::string(64, '2') + ">>>"};
  const std::string id = "<" + std::string(32, 'A') + ">";
  EXPECT_THAT(refusalOf(pdfOfObjects(objects, "/Encrypt 4 0 R/ID[" + id + id + "]")),
              HasSubstr("needs a password"));
}

TEST_F(RenderedPages, ComeOnlyFromARegularFile) {
  for (const char* place : {"/dev/zero", "/"}) {
    PageRequest request{.program = PAGE_PROGRAM};
    const auto failure =
        failureOf([&] { static_cast<void>(readPage(FileDescriptor(::open(place, O_RDONLY)), request)); });
    EXPECT_THAT(failure.what(), HasSubstr("not a PDF document")) << place;
  }
  const auto failure = failureOf([] { static_cast<void>(readPage(FileDescriptor(-1), {})); });
  EXPECT_THAT(failure.what(), HasSubstr("can be read only once"));
}

// A document whose page keeps a reader busy until its time is up.
std::string slowDocument() {
  std::string strokes;
  for (int i = 0; i < 400'000; ++i) strokes += "0 0 m 595 842 9 9 300 " + std::to_string(i) + " c S ";
  return pdfOf({PdfPage{.content = "[0.001] 0 d " + strokes}});
}

// Documents made to keep a reader busy. Reading each must end soon, at worst with a reason.
std::vector<std::pair<std::string, std::string>> hostileDocuments() {
  const std::string page =
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 4 0 R/Resources<</XObject<</X 5 0 R>>>>>>";
  const std::vector<std::string> begin{"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
                                       page};
  const auto with = [&](std::vector<std::string> more) {
    auto objects = begin;
    objects.insert(objects.end(), more.begin(), more.end());
    return pdfOfObjects(objects);
  };
  const std::string image = "/Type/XObject/Subtype/Image/ColorSpace/DeviceRGB/BitsPerComponent 8";
  return {
      {"an image of 60,000 x 60,000 pixels",
       with({pdfStream("595 0 0 842 0 0 cm /X Do"), pdfStream("", image + "/Width 60000/Height 60000")})},
      {"a stream that is packed by a filter 40 times over",
       with({pdfStream(
                 std::string(2'000'000, 'A'), "/Filter[" +
                                                  [] {
                                                    std::string filters;
                                                    for (int i = 0; i < 40; ++i)
                                                      filters += "/RunLengthDecode";
                                                    return filters;
                                                  }() +
                                                  "]"),
             pdfStream("")})},
      {"a form that draws itself",
       with({pdfStream("/X Do"),
             pdfStream("/X Do /X Do",
                       "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</X 5 0 R>>>>")})},
      {"hundreds of thousands of strokes", slowDocument()},
      {"an object stream that is in itself",
       "%PDF-1.5\n1 0 obj\n" + pdfStream("1 0 2 0", "/Type/ObjStm/N 1/First 4/Extends 1 0 R") +
           "\nendobj\ntrailer<</Root 1 0 R>>\n"},
      {"pages that are their own children",
       pdfOfObjects({"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[2 0 R 2 0 R]/Count 1000000000>>"})},
  };
}

TEST_F(RenderedPages, OfHostileDocumentsEndWithinTheirTime) {
  for (const auto& [what, document] : hostileDocuments()) {
    const auto begin = std::chrono::steady_clock::now();
    try {
      static_cast<void>(read(document));
    } catch (const Failure& failure) {
      EXPECT_THAT(failure.what(), HasSubstr("the document's page is not shown: it")) << what;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kSoon) << what;
  }
}

// Runs a script instead of the renderer, as if a document had taken it over.
class AProgramThatRenders : public RenderedPages {
 protected:
  PageRequest requestOf(const std::string& script) {
    const auto program = folder_.write("program", "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return {.program = program, .limit = 300ms};
  }
  std::string refusalOf(const PageRequest& request, const std::string& document = "x") {
    return failureOf([&] { static_cast<void>(readPage(open(document), request)); }).what();
  }
};

// Reads the system's files about the process while it renders a slow document.
TEST_F(AProgramThatRenders, RunsWithoutRightsThatItDoesNotNeed) {
  auto request =
      requestOf("echo $$ >" + (folder_.path() / "process").string() + "; exec " PAGE_PROGRAM " \"$@\"");
  std::atomic<bool> isWanted = true;
  request.limit = 20s;
  request.isWanted = [&] { return isWanted.load(); };
  std::thread reading(
      [&] { EXPECT_THAT(refusalOf(request, slowDocument()), HasSubstr("no longer needed")); });
  const auto processFile = [&](const char* file) {
    std::string process;
    std::getline(std::ifstream(folder_.path() / "process"), process);
    std::ifstream stream("/proc/" + process + '/' + file);
    return std::string(std::istreambuf_iterator<char>(stream), {});
  };
  const auto isFiltered = [&] { return processFile("status").find("Seccomp:\t2") != std::string::npos; };
  for (const auto end = std::chrono::steady_clock::now() + kSoon;
       !isFiltered() && std::chrono::steady_clock::now() < end;)
    std::this_thread::yield();
  EXPECT_TRUE(isFiltered());
  EXPECT_THAT(processFile("status"), HasSubstr("NoNewPrivs:\t1"));
  for (const char* limit :
       {"cpu time +4 +4 ", "file size +0 +0 ", "core file size +0 +0 ", "open files +32 +32 "})
    EXPECT_THAT(processFile("limits"), testing::ContainsRegex(limit));
#ifndef TANDEM_TRIM_SANITIZED
  EXPECT_THAT(processFile("limits"), testing::ContainsRegex("address space +536870912 +536870912 "));
#endif
  isWanted = false;
  reading.join();
}

TEST_F(AProgramThatRenders, IsEndedAfterItsTime) {
  for (const char* script : {"exec sleep 60", "exec >&-; exec sleep 60", "while :; do :; done"}) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(refusalOf(requestOf(script)), HasSubstr("not shown")) << script;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kSoon);
  }
}

TEST_F(AProgramThatRenders, IsEndedOnceNobodyWantsThePage) {
  auto request = requestOf("exec sleep 60");
  request.limit = 60s;
  request.isWanted = [] { return false; };
  EXPECT_THAT(refusalOf(request), HasSubstr("no longer needed"));
}

TEST_F(AProgramThatRenders, HasItsOutputReadUpToTheSizeOfAPage) {
  EXPECT_THAT(refusalOf(requestOf("exec cat /dev/zero")), HasSubstr("returned no page"));
}

TEST_F(AProgramThatRenders, MayBeMissingOrCrash) {
  EXPECT_THAT(refusalOf(requestOf("kill -SEGV $$")), HasSubstr("Segmentation fault"));
  EXPECT_THAT(refusalOf(requestOf("exit 77")), HasSubstr("returned no page"));
  EXPECT_THAT(refusalOf({.program = "/nowhere"}), HasSubstr("/nowhere cannot be run"));
}

// The header of an answer with a picture of 2 x 3 pixels.
PageAnswer smallAnswer() {
  PageAnswer answer;
  answer.pages = 7;
  answer.width = 2;
  answer.height = 3;
  answer.pageWidth = 20;
  answer.pageHeight = answer.longest = 30;
  answer.broadest = 20;
  answer.emptyTop = answer.emptyBottom = answer.emptyLeft = answer.emptyRight = 1;
  return answer;
}

std::optional<RenderedPage> pageOf(const PageAnswer& answer, std::size_t pixels = 6, int longestSide = 3) {
  std::vector<std::byte> bytes(sizeof answer + pixels * sizeof(std::uint32_t));
  std::memcpy(bytes.data(), &answer, sizeof answer);
  return pageIn(bytes, longestSide);
}

TEST(AnAnswer, IsAPageWithItsPicture) {
  const auto page = pageOf(smallAnswer());
  ASSERT_TRUE(page);
  EXPECT_EQ(page->pages, 7);
  EXPECT_EQ(page->columns, 2);
  EXPECT_EQ(page->rows, 3);
  EXPECT_EQ(page->pixels.size(), 6U);
  EXPECT_TRUE(page->empty);
}

TEST(AnAnswer, IsRefusedUnlessItsPictureIsWhole) {
  for (const std::size_t pixels : {0, 5, 7}) EXPECT_FALSE(pageOf(smallAnswer(), pixels)) << pixels;
  EXPECT_FALSE(pageIn({}, 3));
  EXPECT_FALSE(pageOf(smallAnswer(), 6, 2));
  auto wide = smallAnswer();
  std::swap(wide.width, wide.height);
  EXPECT_TRUE(pageOf(wide));
  EXPECT_FALSE(pageOf(wide, 6, 2));
}

TEST(AnAnswer, IsRefusedWithANumberThatNoPageHas) {
  using Change = void (*)(PageAnswer&);
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::vector<Change> changes{[](auto& answer) { answer.mark = 0; },
                                    [](auto& answer) { answer.pages = 0; },
                                    [](auto& answer) { answer.pages = 0xFFFFFFFF; },
                                    [](auto& answer) { answer.width = 0; },
                                    [](auto& answer) { answer.height = 0; },
                                    [](auto& answer) { answer.width = 0x80000001; },
                                    [](auto& answer) { answer.pageWidth = 0; },
                                    [](auto& answer) { answer.pageWidth = kNaN; },
                                    [](auto& answer) { answer.pageHeight = HUGE_VAL; },
                                    [](auto& answer) { answer.pageHeight = -1; },
                                    [](auto& answer) { answer.longest = 0; },
                                    [](auto& answer) { answer.broadest = kNaN; }};
  for (std::size_t i = 0; i < changes.size(); ++i) {
    auto answer = smallAnswer();
    changes[i](answer);
    EXPECT_FALSE(pageOf(answer)) << i;
  }
}

TEST(AnAnswer, HasNoEmptyEdgesIfOneIsImpossible) {
  for (const double beyond : {-1.0, 30.0, HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
    for (double PageAnswer::*const edge :
         {&PageAnswer::emptyTop, &PageAnswer::emptyBottom, &PageAnswer::emptyLeft, &PageAnswer::emptyRight}) {
      auto answer = smallAnswer();
      answer.*edge = beyond;
      const auto page = pageOf(answer);
      ASSERT_TRUE(page);
      EXPECT_FALSE(page->empty) << beyond;
    }
  }
}

}  // namespace
}  // namespace tandemtrim::host
