#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// Copies a document that a program hands over to a private file without a name, so that the program can
/// neither change it any more nor hold up the main loop, and nothing is left behind.
class DocumentCopy {
 public:
  /// The copy, or an unopened descriptor and why there is none.
  using Done = std::function<void(FileDescriptor, std::optional<Failure>)>;

  /// Copies a regular file as a whole, or a pipe to its end, in the background, then runs `done` on the main
  /// loop. Failure for anything else, and where the document leaves too little room in the folder of
  /// temporary files.
  DocumentCopy(FileDescriptor document, Done done);
  DocumentCopy(const DocumentCopy&) = delete;
  DocumentCopy& operator=(const DocumentCopy&) = delete;
  /// Ends the copying, if it is under way; `done` does not run then.
  ~DocumentCopy();

 private:
  struct Work;
  std::shared_ptr<Work> work_;
};

}  // namespace tandemtrim::host
