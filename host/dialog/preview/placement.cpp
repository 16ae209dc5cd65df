#include "host/dialog/preview/placement.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <utility>

#include <strings.h>

namespace tandemtrim::host {
namespace {

constexpr double kPointInMillimetres = 25.4 / 72;
// The factor by which a page may be larger than the sheet without being reduced.
constexpr double kTolerated = 1.02;

// An option by which the print system lays pages out or prints on them, and its value that changes nothing.
struct LayingOut {
  const char* keyword;
  // Null where there is no such value.
  const char* neutral;
};
constexpr std::array<LayingOut, 27> kLayingOut{{{"number-up", "1"},
                                                {"print-scaling", "auto"},
                                                {"scaling", "100"},
                                                {"natural-scaling", "100"},
                                                {"fit-to-page", "false"},
                                                {"fitplot", "false"},
                                                {"fill", "false"},
                                                {"crop-to-fit", "false"},
                                                {"mirror", "false"},
                                                {"landscape", "false"},
                                                {"position", "center"},
                                                {"page-left", nullptr},
                                                {"page-right", nullptr},
                                                {"page-top", nullptr},
                                                {"page-bottom", nullptr},
                                                {"media-left-margin", nullptr},
                                                {"media-right-margin", nullptr},
                                                {"media-top-margin", nullptr},
                                                {"media-bottom-margin", nullptr},
                                                {"page-border", "none"},
                                                {"booklet", "off"},
                                                {"imposition-template", "none"},
                                                {"MirrorPrint", "false"},
                                                {"ipp-attribute-fidelity", "false"},
                                                {"page-label", nullptr},
                                                {"pdfAutorotate", "true"},
                                                {"pdftopdfAutoRotate", "true"}}};

// The picture of a page that is turned to the left, so that its upper edge is on the left, or to the right.
std::vector<std::uint32_t> turned(const RenderedPage& page, bool toTheRight) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(page.pixels.size());
  for (int i = 0; i < page.columns; ++i) {
    const int column = toTheRight ? i : page.columns - 1 - i;
    for (int j = 0; j < page.rows; ++j) {
      const int row = toTheRight ? page.rows - 1 - j : j;
      pixels.push_back(page.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(page.columns) +
                                   static_cast<std::size_t>(column)]);
    }
  }
  return pixels;
}

Edges turned(const Edges& edges, bool toTheRight) {
  const auto& [top, bottom, left, right] = edges;
  return toTheRight ? Edges{left, right, bottom, top} : Edges{right, left, top, bottom};
}

// As the print system compares them: in whole points of the page.
bool isTooLong(double length, double sheet) {
  constexpr double kInexact = 0.01;
  return std::floor(length / kPointInMillimetres / kTolerated) > sheet / kPointInMillimetres + kInexact;
}

// When one page is too large, all pages are fitted.
bool isFitted(const RenderedPage& page, const PaperSheet& sheet) {
  return isTooLong(page.longest, std::max(sheet.width, sheet.height)) ||
         isTooLong(page.broadest, std::min(sheet.width, sheet.height));
}

void resize(platform::PageImage& image, double factor) {
  image.width *= factor;
  image.height *= factor;
  if (!image.empty) return;
  for (auto& edge : *image.empty) edge *= factor;
}

}  // namespace

bool isPageOnItsSheet(const Options& options) {
  return std::ranges::none_of(options, [](const Option& option) {
    return std::ranges::any_of(kLayingOut, [&](const LayingOut& row) {
      return isSameKeyword(option.keyword, row.keyword) &&
             (row.neutral == nullptr || strcasecmp(option.value.c_str(), row.neutral) != 0);
    });
  });
}

std::optional<Edges> unprintableEdges(ppd_file_t* ppd, const std::string& paper) {
  if (ppd == nullptr) return std::nullopt;
  const auto inMillimetres = [](double top, double bottom, double left, double right) {
    return Edges{top * kPointInMillimetres, bottom * kPointInMillimetres, left * kPointInMillimetres,
                 right * kPointInMillimetres};
  };
  for (const auto& size : std::span(ppd->sizes, static_cast<std::size_t>(ppd->num_sizes))) {
    if (isSameKeyword(size.name, paper))
      return inMillimetres(size.length - size.top, size.bottom, size.left, size.width - size.right);
  }
  if (ppd->variable_sizes == 0) return std::nullopt;
  const auto& [left, bottom, right, top] = ppd->custom_margins;
  return inMillimetres(top, bottom, left, right);
}

Edges edgesAcross(const Edges& upright) { return turned(upright, false); }

std::shared_ptr<platform::PageImage> placed(const RenderedPage& page, const PaperSheet& sheet) {
  const bool isTurned = (page.width > page.height) != (sheet.width > sheet.height);
  platform::PageImage image{page.columns, page.rows, {}, 0, 0, page.width, page.height, {}};
  image.pixels = isTurned ? turned(page, sheet.turnsRight) : page.pixels;
  if (page.empty) {
    const auto [top, bottom, left, right] = isTurned ? turned(*page.empty, sheet.turnsRight) : *page.empty;
    image.empty = {top, bottom, left, right};
  }
  if (isTurned) {
    std::swap(image.columns, image.rows);
    std::swap(image.width, image.height);
  }
  Edges around{};
  if (isFitted(page, sheet)) {
    // Without unprintable edges, the print system fills the sheet and crops what is beyond.
    if (!sheet.unprintable || *sheet.unprintable == Edges{}) return nullptr;
    around = *sheet.unprintable;
    const double across = sheet.width - around.left - around.right;
    const double down = sheet.height - around.top - around.bottom;
    if (across <= 0 || down <= 0) return nullptr;
    resize(image, std::min(across / image.width, down / image.height));
  }
  image.left = (sheet.width + around.left - around.right - image.width) / 2;
  image.top = (sheet.height + around.top - around.bottom - image.height) / 2;
  return std::make_shared<platform::PageImage>(std::move(image));
}

}  // namespace tandemtrim::host
