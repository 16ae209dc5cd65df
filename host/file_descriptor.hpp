#pragma once

#include <utility>

#include <unistd.h>

namespace tandemtrim::host {

/// Owns a file's descriptor and closes it. Not open if opening the file failed.
class FileDescriptor {
 public:
  explicit FileDescriptor(int file) noexcept : file_(file) {}
  FileDescriptor(FileDescriptor&& other) noexcept : file_(other.release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
  }
  ~FileDescriptor() {
    if (isOpen()) close(file_);
  }

  [[nodiscard]] bool isOpen() const noexcept { return file_ >= 0; }
  [[nodiscard]] int get() const noexcept { return file_; }
  /// Leaves closing to the caller.
  int release() noexcept { return std::exchange(file_, -1); }

 private:
  int file_;
};

}  // namespace tandemtrim::host
