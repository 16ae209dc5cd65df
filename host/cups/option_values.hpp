#pragma once

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The options with each value in a form that libcups encodes correctly: keywords of enumerations become
/// IPP's numbers, "landscape" 4. Failure, which names the option, for a value that libcups would misread.
Options encodable(Options options);

}  // namespace tandemtrim::host
