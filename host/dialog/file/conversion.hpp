#pragma once

#include <functional>
#include <string>

#include "host/dialog/file/file_format.hpp"
#include "host/job/documents.hpp"

namespace tandemtrim::host {

/// A document in another format, made by a filter of the print system. The destructor removes its files.
class Conversion {
 public:
  /// Failure, with a text for the user, when the filter does not make a file of this format. `check` is
  /// called repeatedly while the filter runs; an exception from it ends the filter.
  Conversion(Document& document, FileFormat format, const std::function<void()>& check);
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;
  ~Conversion() = default;

  /// The path of the file in the new format.
  [[nodiscard]] const std::string& file() const { return converted_.path; }

 private:
  /// A file that only the user can read.
  struct Temporary {
    Temporary();
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary();
    std::string path;
  };

  Temporary original_;
  Temporary converted_;
};

}  // namespace tandemtrim::host
