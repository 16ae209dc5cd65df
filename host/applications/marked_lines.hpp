#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tandemtrim::host {

/// What there was where the marked lines are now.
enum class Before {
  file,
  /// A file whose last line did not end.
  openLine,
  noFile,
  noFolder
};

/// A settings file's text, parted at the lines that this program added. Comment lines before and behind them
/// mark them.
struct MarkedText {
  /// The text as it was without them.
  std::string own;
  bool isMarked = false;
  Before before = Before::file;
};

/// Parts the text of a settings file. Failure that names `file` when one of the two marks is missing.
MarkedText partMarkedLines(std::string_view text, const std::string& file);

/// The text with marked lines at its end. They end as the text's own lines do.
std::string withMarkedLines(const std::string& own, const std::vector<std::string>& lines, Before before);

}  // namespace tandemtrim::host
