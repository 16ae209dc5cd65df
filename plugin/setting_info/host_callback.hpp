#pragma once

#include "platform/extension.hpp"

namespace tandemtrim {

/// The declared type of the host callback that a panel request brings along.
using MorvaTTPdeCallbackKV2 = platform::HostCallback;

}  // namespace tandemtrim
