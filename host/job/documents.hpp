#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <sys/types.h>

#include "host/failure.hpp"
#include "host/file_descriptor.hpp"

namespace tandemtrim::host {

/// One open document to print. What it opens is what it sends, however often, even if the file is replaced
/// meanwhile.
class Document {
 public:
  /// Opens the file, or standard input for "-", and reads its beginning. Failure when it cannot be read or is
  /// empty.
  explicit Document(const std::string& file);
  /// The same for an open file, from its beginning, under this name.
  Document(FileDescriptor file, const std::string& name);

  /// The file's name without folders; "(stdin)" for standard input.
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  /// In bytes; none when it is not known before the end.
  [[nodiscard]] std::optional<std::uint64_t> size() const noexcept { return size_; }

  /// The first few bytes.
  [[nodiscard]] const std::string& beginning() const noexcept { return beginning_; }

  /// Copies what comes through a pipe to a file without a name, so that it can be read more than once.
  /// Failure when there is no room for it.
  void keep();
  /// Hands the whole document over, piece by piece, as long as `take` gives true; whether all of it was
  /// taken. A piece is empty where a signal came while there was nothing to read. Failure when reading fails
  /// midway. Through a pipe once only.
  bool read(const std::function<bool(std::span<const char>)>& take);
  /// The same file once more, opened for reading at its beginning; not open where that is not possible, as in
  /// a pipe.
  [[nodiscard]] FileDescriptor openAgain() const;

 private:
  struct Closed {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  void begin();
  void fill();
  [[nodiscard]] Failure unreadable() const;

  // The file as the user named it, for messages.
  std::string place_;
  std::string name_;
  std::optional<std::uint64_t> size_;
  std::string beginning_;
  std::unique_ptr<std::FILE, Closed> opened_;
  std::FILE* file_ = nullptr;
  // Where the document begins in its file; -1 in a pipe.
  off_t start_ = -1;
  bool begun_ = false;
  std::vector<char> buffer_;
  std::size_t filled_ = 0;
  // Whether a signal ended the last read.
  bool wasInterrupted_ = false;
};

/// Opens all files; see Document.
std::vector<Document> openDocuments(const std::vector<std::string>& files);

}  // namespace tandemtrim::host
