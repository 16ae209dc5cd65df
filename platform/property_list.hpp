#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/object.hpp"

namespace tandemtrim::platform {

/// The property list in the file at `path` when its root is a dictionary. None for a path that is none, a
/// file that is missing or unreadable, and anything that is no property list with such a root. Each platform
/// defines it.
std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path);

}  // namespace tandemtrim::platform
