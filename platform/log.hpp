#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tandemtrim::platform {

/// Writes one message to the system log: `format` with its "%@" replaced by the platform's description of the
/// list. Each platform defines it.
void NSLog(std::string_view format, std::span<const std::string> list);

}  // namespace tandemtrim::platform
