#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/preview/page_reader.hpp"
#include "host/job/options.hpp"
#include "platform/controls.hpp"

namespace tandemtrim::host {

/// A sheet of paper in the size and orientation that the user chose, in millimetres.
struct PaperSheet {
  double width;
  double height;
  /// The edges on which the printer cannot print; nullopt if they are not known.
  std::optional<Edges> unprintable;
  /// Whether the print system turns a page of the other orientation to the right.
  bool turnsRight;
};

/// The edges of the upright paper of this name on which a printer with this PPD cannot print; nullopt if they
/// are not known, as without a PPD (null).
std::optional<Edges> unprintableEdges(ppd_file_t* ppd, const std::string& paper);

/// The same edges for a sheet in landscape orientation.
Edges edgesAcross(const Edges& upright);

/// Whether a job with these options prints each page alone on one side of a sheet.
bool isPageOnItsSheet(const Options& options);

/// The page where the print system puts it, turned if it is of the other orientation: in its own size and in
/// the middle, or fitted to the printable part of the sheet if the sheet is too small for a page of the
/// document. Null if a fitted page would be cropped, or the printable part is unknown or empty.
std::shared_ptr<platform::PageImage> placed(const RenderedPage& page, const PaperSheet& sheet);

}  // namespace tandemtrim::host
