#pragma once

#include <memory>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/bundle.hpp"

namespace tandemtrim::platform::appkit {

/// The core's bundle for the toolkit's, which it retains; null for nil.
std::shared_ptr<platform::Bundle> bundleOf(NSBundle* bundle);
/// The bundle that bundleOf() was given.
NSBundle* toolkitBundleOf(const std::shared_ptr<platform::Bundle>& bundle);

}  // namespace tandemtrim::platform::appkit
