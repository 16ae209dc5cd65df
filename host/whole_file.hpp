#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// The text of a file; nullopt if it does not exist. Failure when it cannot be read, is no regular file or
/// has more than `most` bytes.
std::optional<std::string> readWholeFile(const std::filesystem::path& file,
                                         std::size_t most = std::string().max_size());

/// Replaces the file, which need not exist, as a whole: readers see the old text or the new one. The file
/// keeps its mode, owner and group. On failure nothing has changed.
void replaceFile(const std::filesystem::path& file, const std::string& text);

inline constexpr std::chrono::milliseconds kLongestLock = std::chrono::seconds(10);

/// Locks the file or folder until the result is closed. The lock is on a separate file, with ".lock" appended
/// to the name, since replaceFile() replaces the file itself. Failure when that file cannot be written, or
/// stays locked for `longest`.
FileDescriptor lockFile(const std::filesystem::path& file, std::chrono::milliseconds longest = kLongestLock);

/// "… cannot be read: " and these words.
Failure unreadableFile(const std::filesystem::path& file, const std::string& words);

/// "… cannot be written: " and the reason in errno.
Failure unwritableFile(const std::filesystem::path& file);

}  // namespace tandemtrim::host
