#pragma once

#include <functional>
#include <string>

namespace tandemtrim::host {

/// Tells the person something that does not stop the program.
using Note = std::function<void(const std::string&)>;

}  // namespace tandemtrim::host
