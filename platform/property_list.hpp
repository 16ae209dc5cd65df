#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/object.hpp"

namespace tandemtrim::platform {

/// Reads the property list in the file at `path`; its root must be a dictionary. Null for nullopt, a missing
/// or unreadable file, and anything that is not such a property list. Each platform defines it.
std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path);

}  // namespace tandemtrim::platform
