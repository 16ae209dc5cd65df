#pragma once

#include <array>
#include <optional>
#include <string>

/// What the host knows of the printers of this family without asking their plug-in.
namespace tandemtrim::host {

/// The bundle of a printer whose queue has no PPD to name one.
inline constexpr const char* kDefaultBundle = "TandemTrim.bundle";

/// The keywords of the panel's options. A printer without the panel never gets one of them, whether or not a
/// plug-in is installed that could be asked for them.
inline constexpr std::array<const char*, 7> kPanelKeywords{"MVTandemTrim",    "MVImageDirectionPriority",
                                                           "MVPrintPosition", "MVTopMargin",
                                                           "MVBottomMargin",  "MVLeftMargin",
                                                           "MVRightMargin"};

/// The panel's own spelling of a keyword where letter case alone differs, as CUPS has it; none for a keyword
/// that is not the panel's.
std::optional<std::string> keywordOfPanel(const std::string& keyword);

}  // namespace tandemtrim::host
