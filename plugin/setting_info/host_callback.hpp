#pragma once

#include "platform/extension.hpp"

namespace tandemtrim {

/// The declared type of the host callback in a panel request.
using MorvaTTPdeCallbackKV2 = platform::HostCallback;

}  // namespace tandemtrim
