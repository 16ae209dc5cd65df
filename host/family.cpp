#include "host/family.hpp"

#include <algorithm>

#include "host/options.hpp"

namespace tandemtrim::host {

std::optional<std::string> keywordOfPanel(const std::string& keyword) {
  const auto* const own = std::ranges::find_if(
      kPanelKeywords, [&](const char* candidate) { return isSameKeyword(candidate, keyword); });
  return own == kPanelKeywords.end() ? std::nullopt : std::optional<std::string>(*own);
}

}  // namespace tandemtrim::host
