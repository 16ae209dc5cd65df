#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// The state of the file before the marked lines were added.
enum class Before {
  file,
  /// A file whose last line had no line break.
  openLine,
  noFile,
  noFolder
};

/// A settings file's text without the lines that this program added. Comment lines before and after mark
/// them.
struct MarkedText {
  /// The text as it was before.
  std::string own;
  bool isMarked = false;
  Before before = Before::file;
};

/// Takes the marked lines out of a settings file's text. Failure, which names `file`, when one of the two
/// marks is missing.
MarkedText partMarkedLines(std::string_view text, const std::string& file);

/// The text with marked lines at its end, which have the same line breaks as the text.
std::string withMarkedLines(const std::string& own, const std::vector<std::string>& lines, Before before);

}  // namespace tandemtrim::host
