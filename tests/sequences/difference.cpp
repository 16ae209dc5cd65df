#include "tests/sequences/difference.hpp"

#include "tests/sequences/system.hpp"

namespace tandemtrim::sequences {

std::optional<Difference> findDifference(const Sequence& sequence, Alteration alteration) {
  Model model;
  System system;
  for (auto call = sequence.begin(); call != sequence.end(); ++call) {
    model.play(alteration == nullptr ? *call : alteration(*call));
    system.play(*call);
    auto text = differenceOf(model.observation(), system.observation());
    if (!text.empty()) return Difference{{sequence.begin(), call + 1}, std::move(text)};
  }
  return std::nullopt;
}

namespace {

// Leaves out each run of `calls` calls without which a difference remains.
void leaveOut(Difference& difference, std::size_t calls, Alteration alteration) {
  for (std::size_t start = 0; start + calls <= difference.sequence.size();) {
    auto fewer = difference.sequence;
    const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(start);
    fewer.erase(first, first + static_cast<std::ptrdiff_t>(calls));
    if (auto found = findDifference(fewer, alteration)) {
      difference = *std::move(found);
    } else {
      ++start;
    }
  }
}

}  // namespace

Difference shorten(Difference difference, Alteration alteration) {
  std::size_t before = 0;
  do {
    before = difference.sequence.size();
    for (auto calls = before; calls > 0; calls /= 2) leaveOut(difference, calls, alteration);
  } while (difference.sequence.size() < before);
  return difference;
}

std::string describe(const Difference& difference) {
  std::string text;
  for (const auto& operation : difference.sequence) text += "  " + describe(operation) + "\n";
  return text + "  then " + difference.text;
}

}  // namespace tandemtrim::sequences
