#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// Copies a program's document to a private file without a name, so that the program can neither change it
/// later nor block the main loop, and nothing is left behind.
class DocumentCopy {
 public:
  /// Gets the copy, or an unopened descriptor and the failure.
  using Done = std::function<void(FileDescriptor, std::optional<Failure>)>;

  /// Copies a regular file as a whole, or a pipe to its end, in the background, then runs `done` on the main
  /// loop. Failure for anything else, and where the document leaves too little room in the folder of
  /// temporary files.
  DocumentCopy(FileDescriptor document, Done done);
  DocumentCopy(const DocumentCopy&) = delete;
  DocumentCopy& operator=(const DocumentCopy&) = delete;
  /// Ends the copying, if it is under way; `done` is not called then.
  ~DocumentCopy();

 private:
  struct Work;
  std::shared_ptr<Work> work_;
};

}  // namespace tandemtrim::host
