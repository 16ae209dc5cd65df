#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/extension.hpp"

namespace tandemtrim::platform::appkit {

/// The host's callback object for the core, retained by it; none for nil.
std::shared_ptr<HostCallback> hostCallbackOf(id host);
/// The object that hostCallbackOf() was given.
id hostOf(const std::shared_ptr<HostCallback>& callback);
/// The printing system's handle of such a callback's print settings; null for none.
PMPrintSettings handleOf(const PrintSettings* settings);

}  // namespace tandemtrim::platform::appkit
