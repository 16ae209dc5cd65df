#pragma once

#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/failure.hpp"
#include "host/file_descriptor.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A PPD that is cut or damaged, as gzip's own check says.
class DamagedPpd : public Failure {
 public:
  DamagedPpd(const std::string& name, const std::string& reason);
};

/// Opens a PPD file; Failure when it cannot be read or is malformed, with the line that libcups stumbled
/// over. `name` is what messages call the file.
PpdHandle openPpd(const std::string& path, const std::string& name);

/// The same of an open file. One that gzip has packed is unpacked; DamagedPpd when that cannot be done.
PpdHandle readPpd(FileDescriptor file, const std::string& name);

/// In bytes; none is that large by far.
inline constexpr long kLargestPpd = 32L << 20;
inline constexpr auto kUselessPpd = "the printer's PPD file cannot be used ([words])"_fact;
Failure tooLargePpd(const std::string& what);

/// The bundles that the PPD names as extensions of the print dialog, by their own names, without folders;
/// empty when the printer has no panel.
std::vector<std::string> dialogExtensions(ppd_file_t& ppd);

/// The options with keywords as the PPD spells them where only letter case differs; unchanged for a printer
/// without a PPD (null).
Options asSpelled(ppd_file_t* ppd, Options options);

}  // namespace tandemtrim::host
