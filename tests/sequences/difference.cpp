#include "tests/sequences/difference.hpp"

#include "tests/sequences/system.hpp"

namespace tandemtrim::sequences {

std::optional<Difference> findDifference(const Sequence& sequence, Alteration alteration) {
  Model model;
  System system;
  for (auto call = sequence.begin(); call != sequence.end(); ++call) {
    model.play(alteration == nullptr ? *call : alteration(*call));
    system.play(*call);
    auto text = differenceOf(model.sight(), system.sight());
    if (!text.empty()) return Difference{{sequence.begin(), call + 1}, std::move(text)};
  }
  return std::nullopt;
}

// Calls are left out in ever smaller pieces, as long as a difference stays.
Difference shorten(Difference difference, Alteration alteration) {
  for (auto piece = difference.sequence.size(); piece > 0;
       piece = difference.sequence.size() < piece ? difference.sequence.size() : piece / 2) {
    for (std::size_t start = 0; start + piece <= difference.sequence.size();) {
      auto fewer = difference.sequence;
      const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(start);
      fewer.erase(first, first + static_cast<std::ptrdiff_t>(piece));
      if (auto found = findDifference(fewer, alteration)) {
        difference = *std::move(found);
      } else {
        ++start;
      }
    }
  }
  return difference;
}

std::string describe(const Difference& difference) {
  std::string text;
  for (const auto& operation : difference.sequence) text += "  " + describe(operation) + "\n";
  return text + "  then " + difference.text;
}

}  // namespace tandemtrim::sequences
