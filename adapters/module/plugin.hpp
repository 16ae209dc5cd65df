#pragma once

#include <memory>

#include "platform/extension.hpp"

namespace tandemtrim::platform {

/// A new plug-in. Each platform that has a module defines it.
std::unique_ptr<Plugin> makePlugin();

}  // namespace tandemtrim::platform
