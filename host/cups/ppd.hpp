#pragma once

#include <string>
#include <vector>

#include "host/cups/cups_handles.hpp"

namespace tandemtrim::host {

/// Opens a PPD file; Failure when it cannot be read or is malformed, with the line that libcups stumbled
/// over. `name` is what messages call the file.
PpdHandle openPpd(const std::string& path, const std::string& name);

/// The same of an open file, which is closed.
PpdHandle readPpd(int file, const std::string& name);

/// The bundles that the PPD names as extensions of the print dialog, by their own names, without folders;
/// empty when the printer has no panel.
std::vector<std::string> dialogExtensions(ppd_file_t& ppd);

/// The keyword as the PPD spells it where it differs in letter case only, else the keyword itself.
std::string keywordAsSpelled(ppd_file_t& ppd, const std::string& keyword);

}  // namespace tandemtrim::host
