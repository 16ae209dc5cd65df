#include "host/filled_text.hpp"

#include <algorithm>

namespace tandemtrim::host {

std::string filled(std::string_view text, std::span<const Filling> fillings) {
  std::string result;
  while (!text.empty()) {
    const auto filling = std::ranges::find_if(
        fillings, [&](const Filling& candidate) { return text.starts_with(candidate.first); });
    const bool isPlaceholder = filling != fillings.end();
    result += isPlaceholder ? filling->second : text.substr(0, 1);
    text.remove_prefix(isPlaceholder ? filling->first.size() : 1);
  }
  return result;
}

}  // namespace tandemtrim::host
