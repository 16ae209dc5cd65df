#pragma once

#include <optional>
#include <vector>

#include "host/job/options.hpp"
#include "host/job/page_ranges.hpp"

namespace tandemtrim::host {

/// The pages of a document that a job prints, by their numbers in the document.
struct PrintedPages {
  enum class Set { all, even, odd };

  std::vector<PageRange> ranges{PageRange{}};
  Set set = Set::all;

  /// The first of them at or after `page` and before `end`, or nullopt.
  [[nodiscard]] std::optional<int> from(int page, int end) const;
  /// The last of them at or before `page`, or nullopt.
  [[nodiscard]] std::optional<int> upTo(int page) const;
};

/// The pages that a job with these options prints.
PrintedPages printedPages(const Options& options);

}  // namespace tandemtrim::host
