#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform::linux {

/// Whether the name is that of one thing in a folder, not of the folder itself nor of what is outside.
bool isFileName(std::string_view name) noexcept;

/// The bytes of the file at `path`. None when it is missing, cannot be read, is no regular file (a pipe could
/// block for ever), or holds more than `limit` bytes; `fault` then says which.
std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit,
                                                 std::string* fault = nullptr);

}  // namespace tandemtrim::platform::linux
