#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/extension.hpp"

namespace tandemtrim::platform::appkit {

/// The core's callback for the host's object, which it retains; null for nil.
std::shared_ptr<HostCallback> hostCallbackOf(id host);
/// The object that hostCallbackOf() was given.
id hostOf(const std::shared_ptr<HostCallback>& callback);
/// The printing system's handle of such a callback's print settings; null for null.
PMPrintSettings handleOf(const PrintSettings* settings);

}  // namespace tandemtrim::platform::appkit
