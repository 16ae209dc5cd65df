#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform::linux {

/// Whether the name is that of an entry in a folder: a single part of a path, neither "." nor "..".
bool isFileName(std::string_view name) noexcept;

/// The bytes of the file at `path`. Nullopt if it is missing, cannot be read, is not a regular file (a pipe
/// could block for ever), or has more than `limit` bytes; `fault` then says why.
std::optional<std::string> contentsOfRegularFile(const std::string& path, std::size_t limit,
                                                 std::string* fault = nullptr);

}  // namespace tandemtrim::platform::linux
