#pragma once

#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/failure.hpp"
#include "host/file_descriptor.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// A PPD that is truncated or damaged, as gzip's check shows.
class DamagedPpd : public Failure {
 public:
  DamagedPpd(const std::string& name, const std::string& reason);
};

/// Opens a PPD file. Failure when it cannot be read or is malformed, with the line where libcups stopped.
/// Messages call the file `name`.
PpdHandle openPpd(const std::string& path, const std::string& name);

/// The same for an open file. A file packed by gzip is unpacked; DamagedPpd when that fails.
PpdHandle readPpd(FileDescriptor file, const std::string& name);

/// In bytes; far larger than any real PPD.
inline constexpr long kLargestPpd = 32L << 20;
inline constexpr auto kUselessPpd = "the printer's PPD file cannot be used ([words])"_fact;
Failure tooLargePpd(const std::string& what);

/// The names, without folders, of the bundles that extend the print dialog according to the PPD; empty when
/// the printer has no panel.
std::vector<std::string> dialogExtensions(ppd_file_t& ppd);

/// The options with their keywords in the PPD's letter case; unchanged without a PPD (null).
Options asSpelled(ppd_file_t* ppd, Options options);

}  // namespace tandemtrim::host
