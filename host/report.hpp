#pragma once

#include <functional>
#include <string>

namespace tandemtrim::host {

/// Shows a message to whoever runs the program, which goes on.
using Report = std::function<void(const std::string&)>;

}  // namespace tandemtrim::host
