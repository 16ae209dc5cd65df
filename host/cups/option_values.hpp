#pragma once

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The options with each value in the form that libcups encodes: keywords of enumerations become the numbers
/// that IPP's registries give them, "landscape" 4. Failure, which names the option, for a value that libcups
/// would take for another.
Options encodable(Options options);

}  // namespace tandemtrim::host
