#include "tests/sequences/operation.hpp"

#include <array>

#include "tests/support/text_pieces.hpp"

namespace tandemtrim::sequences {
namespace {

struct Weight {
  Call call;
  int weight;
};

constexpr std::array<Weight, 21> kWeights{{
    {Call::makePanel, 3},  {Call::dropPanel, 1},    {Call::refuse, 1}, {Call::panelView, 4},
    {Call::willShow, 5},   {Call::restore, 3},      {Call::save, 8},   {Call::summary, 6},
    {Call::describe, 1},   {Call::type, 9},         {Call::append, 5}, {Call::backspace, 3},
    {Call::clickCheck, 6}, {Call::clickDefault, 4}, {Call::step, 6},   {Call::choose, 6},
    {Call::mix, 1},        {Call::store, 8},        {Call::remove, 2}, {Call::lock, 1},
    {Call::changeJob, 1},
}};

std::size_t below(Random& random, std::size_t count) { return static_cast<std::size_t>(random() % count); }

template <class Container>
const auto& anyOf(Random& random, const Container& container) {
  return container[below(random, std::size(container))];
}

std::string typedText(Random& random) {
  static const auto kPieces = [] {
    auto pieces = test::kTextPieces;
    pieces.insert(pieces.end(), {"42", "\t", "\xFF"});  // the last is no UTF-8
    return pieces;
  }();
  std::string text;
  for (auto pieces = below(random, 5); pieces > 0; --pieces) text += anyOf(random, kPieces);
  return text;
}

std::string storedText(Random& random) {
  static const std::vector<std::string> kValues{"On",
                                                "Off",
                                                "on",
                                                "ON",
                                                "1",
                                                "LongEdgeFeed",
                                                "ShortEdgeFeed",
                                                "Left",
                                                "Port",
                                                "",
                                                "Center",
                                                "Right",
                                                "Midships",
                                                "-3",
                                                " 7",
                                                "3.7",
                                                "12",
                                                "0",
                                                "61",
                                                "1e3",
                                                "+-4",
                                                "Here",
                                                "gtk-ignore-value",
                                                "5 mm",
                                                "-9223372036854775809",
                                                "9223372036854775807"};
  return below(random, 4) == 0 ? typedText(random) : anyOf(random, kValues);
}

Call anyCall(Random& random) {
  static const int kTotal = [] {
    int total = 0;
    for (const auto& [call, weight] : kWeights) total += weight;
    return total;
  }();
  auto left = static_cast<int>(below(random, static_cast<std::size_t>(kTotal)));
  for (const auto& [call, weight] : kWeights) {
    left -= weight;
    if (left < 0) return call;
  }
  return Call::save;
}

Operation makePanel(Random& random) {
  // The ordinary bundle half of the time.
  const auto configuration = below(random, 2) == 0 ? 0 : below(random, configurations().size());
  return {Call::makePanel,
          below(random, 4) == 0 ? std::size_t{1} : 0,
          configuration,
          static_cast<int>(below(random, printers().size())),
          {}};
}

Operation anyOperation(Random& random) {
  const auto call = anyCall(random);
  Operation operation{call, below(random, 4) == 0 ? std::size_t{1} : 0, 0, 0, {}};
  switch (call) {
    case Call::makePanel:
      return makePanel(random);
    case Call::type:
    case Call::append:
      operation.text = typedText(random);
      [[fallthrough]];
    case Call::backspace:
      operation.which = below(random, kSides);
      break;
    case Call::step:
      operation.which = below(random, kSides);
      operation.number = static_cast<int>(below(random, 7)) - 3;
      break;
    case Call::choose:
      operation.which = below(random, kMenus);
      operation.number = static_cast<int>(below(random, operation.which == 0 ? 2 : 3));
      break;
    case Call::store:
    case Call::lock:
      operation.text = storedText(random);
      [[fallthrough]];
    case Call::remove:
      operation.which = below(random, kSettings);
      operation.number = static_cast<int>(below(random, kJobs));
      break;
    case Call::changeJob:
      operation.number = static_cast<int>(below(random, kJobs + 1));
      break;
    default:
      break;
  }
  return operation;
}

std::string quoted(const std::string& text) {
  if (text.size() <= 100) return '"' + text + '"';
  return "text of " + std::to_string(text.size()) + " bytes";
}

}  // namespace

Sequence anySequence(Random& random) {
  constexpr std::size_t kLongest = 24;
  Sequence sequence;
  // Some sequences store foreign values before the panel is made.
  for (auto count = below(random, 4); count > 1; --count) {
    sequence.push_back({Call::store, 0, below(random, kSettings), 0, storedText(random)});
  }
  sequence.push_back(makePanel(random));
  if (below(random, 8) != 0) sequence.push_back({Call::panelView, sequence.back().panel, 0, 0, {}});
  if (below(random, 4) != 0) sequence.push_back({Call::willShow, sequence.back().panel, 0, 0, {}});
  if (below(random, 2) != 0) sequence.push_back({Call::clickCheck, sequence.back().panel, 0, 0, {}});
  for (auto count = below(random, kLongest); count > 0; --count) sequence.push_back(anyOperation(random));
  return sequence;
}

std::string describe(const Operation& operation) {
  static const std::array<const char*, kSides> kNames{"Top", "Bottom", "Left", "Right"};
  static const std::array<const char*, kSettings> kKeys{"Valid",  "Direction", "Position", "Top",
                                                        "Bottom", "Left",      "Right"};
  const auto panel = "panel " + std::to_string(operation.panel) + ": ";
  const auto number = std::to_string(operation.number);
  const auto which = std::to_string(operation.which);
  switch (operation.call) {
    case Call::makePanel:
      return panel + "made for printer " + number + " by bundle " + which;
    case Call::dropPanel:
      return panel + "dropped";
    case Call::refuse:
      return "requests that return no panel";
    case Call::panelView:
      return panel + "panelView";
    case Call::willShow:
      return panel + "willShow";
    case Call::restore:
      return panel + "restoreValuesAndReturnError";
    case Call::save:
      return panel + "saveValuesAndReturnError";
    case Call::summary:
      return panel + "summaryInfo";
    case Call::describe:
      return panel + "name, kind, keywords";
    case Call::type:
      return panel + "type " + quoted(operation.text) + " into " + kNames.at(operation.which);
    case Call::append:
      return panel + "append " + quoted(operation.text) + " to " + kNames.at(operation.which);
    case Call::backspace:
      return panel + "backspace in " + kNames.at(operation.which);
    case Call::clickCheck:
      return panel + "click the check box";
    case Call::clickDefault:
      return panel + "click the restore-default button";
    case Call::step:
      return panel + "click the stepper of " + kNames.at(operation.which) + " " + number + " times";
    case Call::choose:
      return panel + "choose item " + number + " of menu " + which;
    case Call::mix:
      return panel + "put the check box into the mixed state";
    case Call::store:
      return "job " + number + ": store " + quoted(operation.text) + " for " + kKeys.at(operation.which);
    case Call::remove:
      return "job " + number + ": remove " + kKeys.at(operation.which);
    case Call::lock:
      return "job " + number + ": lock " + quoted(operation.text) + " for " + kKeys.at(operation.which);
    case Call::changeJob:
      return "the host's job becomes job " + number;
  }
  return {};
}

}  // namespace tandemtrim::sequences
