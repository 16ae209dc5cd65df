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

/// The page of the PDF document in this regular file, which it closes, as it is printed; pages count from 1.
/// The longer side of the picture has at most `longestSide` pixels.
Rendering render(int document, int page, int longestSide);

}  // namespace tandemtrim::host
