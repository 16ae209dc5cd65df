#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/dialog/file/file_format.hpp"
#include "host/job/documents.hpp"

namespace tandemtrim::host {

/// Where to save a document, and in which format.
struct FileTarget {
  std::string uri;
  FileFormat format;
};

/// A document that was saved.
struct SavedFile {
  /// The file's name with its folders, as a user reads it.
  std::string name;
  std::uint64_t bytes = 0;
};

/// Saves the document: unchanged if it is in the target's format, else converted by the print system's
/// filters. An existing file is replaced as a whole once the new one is complete, and keeps its permissions
/// where the file system allows. Failure, with a text for the user, when the document cannot be saved; an
/// existing file is then unchanged. `check` is called repeatedly; an exception from it ends the work.
SavedFile saveToFile(Document& document, const FileTarget& target, const std::function<void()>& check);

}  // namespace tandemtrim::host
