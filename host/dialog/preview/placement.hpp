#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/dialog/preview/page_reader.hpp"
#include "host/job/options.hpp"
#include "platform/controls.hpp"

namespace tandemtrim::host {

/// A sheet of paper as the user chose it, turned as it is chosen, in millimetres.
struct PaperSheet {
  double width;
  double height;
  /// How much at its edges the printer cannot print on; none where nobody says so.
  std::optional<Edges> unprintable;
  /// The way that the print system turns a page of the other orientation.
  bool turnsRight;
};

/// How much at the edges of the paper of this name, upright, a printer with this PPD (null has none) cannot
/// print on.
std::optional<Edges> unprintableEdges(ppd_file_t* ppd, const std::string& paper);

/// The same edges of a sheet that is turned to be read across.
Edges edgesAcross(const Edges& upright);

/// Whether a job that is laid out by these options puts each page on a sheet of its own and nothing else
/// there.
bool isPageOnItsSheet(const Options& options);

/// The page where the print system puts it, turned where it is of the other orientation: in its own size and
/// in the middle, or fitted to the printable part of the sheet where the sheet is too small for a page of
/// the document. Null where it would be cropped or nobody knows that part.
std::shared_ptr<platform::PageImage> placed(const RenderedPage& page, const PaperSheet& sheet);

}  // namespace tandemtrim::host
