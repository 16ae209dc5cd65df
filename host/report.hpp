#pragma once

#include <functional>
#include <string>

namespace tandemtrim::host {

/// Shows a message to the user; the work continues.
using Report = std::function<void(const std::string&)>;

}  // namespace tandemtrim::host
