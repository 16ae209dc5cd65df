#pragma once

#include <cstdint>
#include <vector>

#include "host/preview/page_answer.hpp"

namespace tandemtrim::host {

struct Rendering {
  PageStatus status = PageStatus::broken;
  PageAnswer answer{};
  std::vector<std::uint32_t> pixels{};
};

/// Renders a page, counted from 1, of the PDF document in this regular file as it is printed; closes the
/// file. The longer side of the picture has at most `longestSide` pixels.
Rendering render(int document, int page, int longestSide);

}  // namespace tandemtrim::host
