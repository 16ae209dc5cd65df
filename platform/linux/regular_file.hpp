#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tandemtrim::platform::linux {

/// The bytes of the file at `path`. None when it is missing, cannot be read, is no regular file (a pipe could
/// block for ever), or holds more than `limit` bytes.
std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit);

}  // namespace tandemtrim::platform::linux
