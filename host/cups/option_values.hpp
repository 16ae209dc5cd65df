#pragma once

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The options with each value in a form that libcups encodes correctly: a keyword of an enumeration becomes
/// IPP's number, such as 4 for "landscape". Failure, which names the option, for a value that libcups would
/// misread.
Options encodable(Options options);

}  // namespace tandemtrim::host
