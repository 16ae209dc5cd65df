#pragma once

#include <memory>

#include "host/dialog/preview/page_reader.hpp"
#include "host/job/options.hpp"
#include "platform/controls.hpp"

namespace tandemtrim::host {

/// A sheet of paper as the user chose it, turned as it is chosen, in millimetres.
struct SheetSize {
  double width;
  double height;
  /// Of the part that the printer can print on.
  double printableWidth;
  double printableHeight;
};

/// Whether a job that is laid out by these options puts each page on a sheet of its own and nothing else
/// there.
bool isPageOnItsSheet(const Options& options);

/// The page where the print system puts it: in the middle, turned to the left where it is of the other
/// orientation, and reduced to what is printable where the sheet is too small for it.
std::shared_ptr<const platform::PageImage> placed(const RenderedPage& page, const SheetSize& sheet);

}  // namespace tandemtrim::host
