#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/dialog/file/file_format.hpp"
#include "host/job/documents.hpp"

namespace tandemtrim::host {

/// Where a document is to be saved, and as what.
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

/// Saves the document: as it is where it is in the target's format, else as the print system's filters turn
/// it out. A file that is there is replaced as a whole once the new one is complete, and keeps its
/// permissions. Failure, with a text for the user, when the document cannot be saved; what was there is as it
/// was then. `check` runs again and again, and ends the work by what it raises.
SavedFile saveToFile(Document& document, const FileTarget& target, const std::function<void()>& check);

}  // namespace tandemtrim::host
