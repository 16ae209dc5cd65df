#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// The text of a file; none where there is no file. Failure when it cannot be read, is no regular file or has
/// more than `most` bytes.
std::optional<std::string> readWholeFile(const std::filesystem::path& file,
                                         std::size_t most = std::string().max_size());

/// Replaces the file, which need not exist, as a whole: readers see the old text or the new one. It keeps its
/// mode and its owner. Failure when it cannot be written; then nothing has changed.
void replaceFile(const std::filesystem::path& file, const std::string& text);

inline constexpr std::chrono::milliseconds kLongestLock = std::chrono::seconds(10);

/// Nobody else has a lock of the file or folder until this one is closed. It is on a file of its own, with
/// ".lock" behind the name, since the other one is replaced. Failure when that file cannot be written, or
/// others keep it locked for the longest time.
FileDescriptor lockFile(const std::filesystem::path& file, std::chrono::milliseconds longest = kLongestLock);

/// That the file cannot be read, for the reason in these words.
Failure unreadableFile(const std::filesystem::path& file, const std::string& words);

/// That the file cannot be written, for the reason that errno holds.
Failure unwritableFile(const std::filesystem::path& file);

}  // namespace tandemtrim::host
