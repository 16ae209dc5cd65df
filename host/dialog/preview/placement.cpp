#include "host/dialog/preview/placement.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include <strings.h>

namespace tandemtrim::host {
namespace {

// By so much a page may be larger than the sheet without being reduced: papers are given in whole points.
constexpr double kSameSize = 1;

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

// The picture of a page that is turned to the left: its upper edge is on the left then.
std::vector<std::uint32_t> turned(const RenderedPage& page) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(page.pixels.size());
  for (int column = page.columns - 1; column >= 0; --column) {
    for (int row = 0; row < page.rows; ++row)
      pixels.push_back(page.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(page.columns) +
                                   static_cast<std::size_t>(column)]);
  }
  return pixels;
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

std::shared_ptr<const platform::PageImage> placed(const RenderedPage& page, const SheetSize& sheet) {
  const bool isTurned = (page.width > page.height) != (sheet.width > sheet.height);
  platform::PageImage image{page.columns, page.rows,   isTurned ? turned(page) : page.pixels,
                            page.width,   page.height, {}};
  if (page.empty) {
    const auto& [top, bottom, left, right] = *page.empty;
    image.empty = isTurned ? std::array{right, left, top, bottom} : std::array{top, bottom, left, right};
  }
  if (isTurned) {
    std::swap(image.columns, image.rows);
    std::swap(image.width, image.height);
  }
  if (image.width > sheet.width + kSameSize || image.height > sheet.height + kSameSize) {
    const double scale = std::min(sheet.printableWidth / image.width, sheet.printableHeight / image.height);
    image.width *= scale;
    image.height *= scale;
    for (std::size_t edge = 0; image.empty && edge < image.empty->size(); ++edge)
      image.empty->at(edge) *= scale;
  }
  return std::make_shared<const platform::PageImage>(std::move(image));
}

}  // namespace tandemtrim::host
