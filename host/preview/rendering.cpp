#include "host/preview/rendering.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>
#include <span>

#include <cairo.h>
#include <poppler.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
// The longer side, in pixels, of the picture in which the content is measured: 0.15 mm a pixel for a usual
// page.
constexpr double kMeasuredSide = 2048;
constexpr std::uint32_t kWhite = 255;
// The faintest ink that counts as content, of 255.
constexpr std::uint32_t kFaintest = 10;

struct Unreferenced {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct Destroyed {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroyed>;
using Context = std::unique_ptr<cairo_t, Destroyed>;

using Page = std::unique_ptr<PopplerPage, Unreferenced>;

struct Size {
  double width;
  double height;
};

// In points.
Size sizeOf(PopplerPage& page) {
  Size size{};
  poppler_page_get_size(&page, &size.width, &size.height);
  return size;
}

// Null for a page that cannot be read, or has no size.
Page pageOf(PopplerDocument& document, int number) {
  Page page(poppler_document_get_page(&document, number - 1));
  if (!page) return nullptr;
  const auto [width, height] = sizeOf(*page);
  const bool hasSize = width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height);
  return hasSize ? std::move(page) : nullptr;
}

// A side in whole pixels, at least one.
int pixels(double side) { return std::max(1, static_cast<int>(std::lround(side))); }

// A white picture whose longer side has this many pixels.
Surface sheetOf(const Size& size, double longestSide) {
  const double scale = longestSide / std::max(size.width, size.height);
  Surface sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(size.width * scale),
                                           pixels(size.height * scale)));
  const Context cairo(cairo_create(sheet.get()));
  cairo_set_source_rgb(cairo.get(), 1, 1, 1);
  cairo_paint(cairo.get());
  return sheet;
}

bool isUsable(const Surface& surface) { return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS; }

Context drawingOn(const Surface& surface, const Size& size) {
  Context cairo(cairo_create(surface.get()));
  cairo_scale(cairo.get(), cairo_image_surface_get_width(surface.get()) / size.width,
              cairo_image_surface_get_height(surface.get()) / size.height);
  return cairo;
}

std::span<const std::uint32_t> rowOf(const Surface& surface, int y) {
  const auto* const row = cairo_image_surface_get_data(surface.get()) +
                          std::ptrdiff_t{y} * cairo_image_surface_get_stride(surface.get());
  return {reinterpret_cast<const std::uint32_t*>(row),
          static_cast<std::size_t>(cairo_image_surface_get_width(surface.get()))};
}

// From 0, the paper, to 255.
std::uint32_t inkOf(std::uint32_t pixel) {
  return kWhite - std::min({pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF});
}

bool isInk(std::uint32_t pixel) { return inkOf(pixel) >= kFaintest; }

// How much of the first pixel with ink is empty: content colours a pixel in proportion to the part that it
// covers. Thin content has no fully covered pixel to compare the first with, so it is taken as black.
double emptyPart(std::uint32_t first, std::uint32_t next) {
  const auto ink = inkOf(first);
  const auto full = inkOf(next) >= ink ? inkOf(next) : kWhite;
  return 1 - static_cast<double>(ink) / full;
}

// How many pixels, with a fraction, precede the first ink of this line; nullopt for a line without ink.
template <class Iterator>
std::optional<double> emptyPixels(Iterator begin, Iterator end) {
  const auto first = std::find_if(begin, end, isInk);
  if (first == end) return std::nullopt;
  const auto next = std::next(first);
  const auto behind = next == end ? *first : *next;
  return static_cast<double>(first - begin) + emptyPart(*first, behind);
}

// How much of the page's first or last row with ink is empty, compared with the next row towards the content.
double emptyPartOf(std::span<const std::uint32_t> row, std::span<const std::uint32_t> next) {
  double least = 1;
  for (std::size_t x = 0; x < row.size(); ++x) {
    if (isInk(row[x])) least = std::min(least, emptyPart(row[x], next[x]));
  }
  return least;
}

// How much of the page is empty at each of its edges.
void measure(const Surface& surface, PageAnswer& answer) {
  const int width = cairo_image_surface_get_width(surface.get());
  const int height = cairo_image_surface_get_height(surface.get());
  double left = width;
  double right = width;
  std::optional<int> top;
  int last = 0;
  for (int y = 0; y < height; ++y) {
    const auto row = rowOf(surface, y);
    const auto before = emptyPixels(row.begin(), row.end());
    if (!before) continue;
    left = std::min(left, *before);
    right = std::min(right, *emptyPixels(row.rbegin(), row.rend()));
    if (!top) top = y;
    last = y;
  }
  if (!top) return;
  const auto inRow = [&](int y, int next) {
    return emptyPartOf(rowOf(surface, y), rowOf(surface, std::clamp(next, 0, height - 1)));
  };
  answer.emptyTop = (*top + inRow(*top, *top + 1)) * answer.pageHeight / height;
  answer.emptyBottom = (height - 1 - last + inRow(last, last - 1)) * answer.pageHeight / height;
  answer.emptyLeft = left * answer.pageWidth / width;
  answer.emptyRight = right * answer.pageWidth / width;
}

void measurePages(PopplerDocument& document, PageAnswer& answer) {
  for (int number = 1; number <= static_cast<int>(answer.pages); ++number) {
    const auto page = pageOf(document, number);
    if (!page) continue;
    const auto [width, height] = sizeOf(*page);
    answer.longest = std::max(answer.longest, std::max(width, height) * kMillimetresPerPoint);
    answer.broadest = std::max(answer.broadest, std::min(width, height) * kMillimetresPerPoint);
  }
}

Surface reduced(Surface original, int longestSide) {
  const Size size{static_cast<double>(cairo_image_surface_get_width(original.get())),
                  static_cast<double>(cairo_image_surface_get_height(original.get()))};
  if (std::max(size.width, size.height) <= longestSide) return original;
  auto smaller = sheetOf(size, longestSide);
  const auto cairo = drawingOn(smaller, size);
  cairo_set_source_surface(cairo.get(), original.get(), 0, 0);
  cairo_paint(cairo.get());
  cairo_surface_flush(smaller.get());
  return smaller;
}

void takePixels(const Surface& surface, Rendering& rendering) {
  rendering.answer.width = static_cast<std::uint32_t>(cairo_image_surface_get_width(surface.get()));
  rendering.answer.height = static_cast<std::uint32_t>(cairo_image_surface_get_height(surface.get()));
  for (int y = 0; y < cairo_image_surface_get_height(surface.get()); ++y) {
    const auto row = rowOf(surface, y);
    rendering.pixels.insert(rendering.pixels.end(), row.begin(), row.end());
  }
}

}  // namespace

Rendering render(int document, int page, int longestSide) {
  Rendering rendering;
  struct stat status {};
  if (fstat(document, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(document);
    return rendering;
  }
  GError* error = nullptr;
  const std::unique_ptr<PopplerDocument, Unreferenced> opened(
      poppler_document_new_from_fd(document, nullptr, &error));
  if (!opened) {
    if (g_error_matches(error, POPPLER_ERROR, POPPLER_ERROR_ENCRYPTED) != FALSE)
      rendering.status = PageStatus::locked;
    g_error_free(error);
    return rendering;
  }
  const int count = poppler_document_get_n_pages(opened.get());
  if (count < 1) return rendering;
  rendering.status = PageStatus::noSuchPage;
  if (page < 1 || page > count) return rendering;
  rendering.status = PageStatus::broken;
  const auto read = pageOf(*opened, page);
  if (!read) return rendering;
  const auto size = sizeOf(*read);

  auto surface = sheetOf(size, kMeasuredSide);
  const auto cairo = drawingOn(surface, size);
  poppler_page_render_for_printing(read.get(), cairo.get());
  cairo_surface_flush(surface.get());
  if (!isUsable(surface)) return rendering;
  auto& answer = rendering.answer;
  answer.pages = static_cast<std::uint32_t>(count);
  answer.pageWidth = size.width * kMillimetresPerPoint;
  answer.pageHeight = size.height * kMillimetresPerPoint;
  measure(surface, answer);
  measurePages(*opened, answer);
  surface = reduced(std::move(surface), longestSide);
  if (!isUsable(surface)) return rendering;
  takePixels(surface, rendering);
  rendering.status = PageStatus::rendered;
  return rendering;
}

}  // namespace tandemtrim::host
