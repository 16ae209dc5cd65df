#pragma once

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The options without those that repeat a queue's usual value, such as number-up=1, where a job has that
/// value anyway; all others stay. `defaults` are the options of a job that has none of its own: the server's
/// defaults and those that the administrator saved for all users.
Options withoutQueueDefaults(Options options, const Options& defaults);

}  // namespace tandemtrim::host
