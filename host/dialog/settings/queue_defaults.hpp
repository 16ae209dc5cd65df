#pragma once

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The options without those whose value the server uses for a job anyway. `serverDefaults` are the server's
/// own defaults for jobs on the queue.
Options withoutQueueDefaults(Options options, const Options& serverDefaults);

}  // namespace tandemtrim::host
