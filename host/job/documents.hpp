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

/// One open document to print. It always reads the file that it opened, even if another file replaces that
/// one.
class Document {
 public:
  /// Opens the file, or standard input for "-", and reads its beginning. Failure when it cannot be read or is
  /// empty.
  explicit Document(const std::string& file);
  /// The same for an open file, from its beginning, under this name.
  Document(FileDescriptor file, const std::string& name);

  /// The file's name without folders; "(stdin)" for standard input.
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  /// In bytes; nullopt if it is not known before the end, as for a pipe.
  [[nodiscard]] std::optional<std::uint64_t> size() const noexcept { return size_; }

  /// The first few bytes.
  [[nodiscard]] const std::string& beginning() const noexcept { return beginning_; }

  /// Copies a pipe's content to an unnamed temporary file, so that it can be read more than once. Failure
  /// when there is no room for it.
  void keep();
  /// Passes the document to `take`, piece by piece, until that returns false; returns whether all of it was
  /// taken. A piece is empty when a signal came while there was nothing to read. Failure when reading fails.
  /// A pipe can be read only once.
  bool read(const std::function<bool(std::span<const char>)>& take);
  /// Opens the same file again, for reading from its beginning; the result is not open when that is
  /// impossible, as for a pipe.
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
