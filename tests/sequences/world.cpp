#include "tests/sequences/world.hpp"

namespace tandemtrim::sequences {
namespace {

std::map<std::string, std::string> ordinaryStrings() {
  return {{"TandemTrim", "Panel Name"},
          {"EnableTandemTrim", "Trim It"},
          {"ImageDirection", "Which Way"},
          {"InformPrintingPosition", "Where"},
          {"TopMargin", "Above"},
          {"BottomMargin", "Below"},
          {"LeftMargin", "Before"},
          {"RightMargin", "Behind"},
          {"RestoreDefault", "As It Was"},
          {"IntegerValueRangeFormat", "[min] - [max]"},
          {"Left", "Port"},
          {"Center", "Midships"},
          {"Right", "Starboard"},
          {"LongEdgeFeed", "Long First"},
          {"ShortEdgeFeed", "Short First"},
          {"On", "Yes"},
          {"Off", "No"}};
}

std::vector<Configuration> makeConfigurations() {
  Configuration ordinary;
  ordinary.strings = ordinaryStrings();
  std::vector<Configuration> made(13, ordinary);
  // A minimum above 0, and bounds that are not whole numbers.
  made[1].min = "5";
  made[2].min = "2.5";
  made[2].max = "40.75";
  made[2].defaults[3] = "5.5";
  // Bounds that cross, and bounds below 0.
  made[3].min = "20";
  made[3].max = "10";
  made[4].min = "-10";
  made[4].max = "-2";
  made[4].defaults[4] = "-7";
  // No limit where the PPD has none either, so that the minimum becomes the limit.
  made[5].limit = std::nullopt;
  // Without texts; with the same texts for different keys.
  made[6].strings.clear();
  made[7].strings["Left"] = made[7].strings["Center"];
  made[7].strings["ShortEdgeFeed"] = made[7].strings["LongEdgeFeed"];
  made[7].strings["InformPrintingPosition"] = made[7].strings["ImageDirection"];
  made[7].strings["IntegerValueRangeFormat"] = "[min][max][min]";
  // Other keys. Nothing can be stored under the empty one.
  made[8].keys = {"a", "b", "c", "d", "e", "f", ""};
  made[8].defaults = {"On", "ShortEdgeFeed", "Nowhere", "0", "100", "-1", "12"};
  made[8].kind = std::nullopt;
  // A token of the minimum that is part of the usual token of the maximum; an empty token.
  made[9].minToken = "[max";
  made[9].maxToken = "]";
  made[10].minToken = "";
  // No panel can be made; no view can be set up.
  made[11].defaults[5] = std::nullopt;
  made[12].min = std::nullopt;
  return made;
}

template <class Value>
std::string differenceIn(const char* what, const Value& expected, const Value& got) {
  if (expected == got) return {};
  if constexpr (std::is_same_v<Value, std::string>) {
    return std::string(what) + ": \"" + expected + "\" expected, \"" + got + '"';
  } else if constexpr (std::is_arithmetic_v<Value>) {
    return std::string(what) + ": " + std::to_string(expected) + " expected, " + std::to_string(got);
  } else {
    return std::string(what) + " differ";
  }
}

std::string textOf(const Job& job) {
  std::string text;
  for (const auto& [key, value] : job) text += key + "=\"" + value + "\" ";
  return text;
}

std::string differenceOf(const Look& expected, const Look& got) {
  std::vector<std::string> found{differenceIn("state of the check box", expected.check, got.check),
                                 differenceIn("title of the check box", expected.checkTitle, got.checkTitle),
                                 differenceIn("title of the button", expected.buttonTitle, got.buttonTitle),
                                 differenceIn("button enabled", expected.buttonEnabled, got.buttonEnabled),
                                 differenceIn("the labels' colours", expected.dimmed, got.dimmed)};
  for (std::size_t label = 0; label < expected.labels.size(); ++label)
    found.push_back(differenceIn("label", expected.labels.at(label), got.labels.at(label)));
  for (std::size_t side = 0; side < kSides; ++side) {
    const auto& one = expected.margins.at(side);
    const auto& other = got.margins.at(side);
    found.push_back(differenceIn("text of a box", one.box, other.box));
    found.push_back(differenceIn("text of a stepper", one.stepper, other.stepper));
    found.push_back(differenceIn("least value of a stepper", one.least, other.least));
    found.push_back(differenceIn("largest value of a stepper", one.largest, other.largest));
    found.push_back(differenceIn("box enabled", one.boxEnabled, other.boxEnabled));
    found.push_back(differenceIn("stepper enabled", one.stepperEnabled, other.stepperEnabled));
  }
  found.push_back(differenceIn("the menus", expected.menus, got.menus));
  for (const auto& difference : found) {
    if (!difference.empty()) return difference;
  }
  return {};
}

}  // namespace

const std::vector<Configuration>& configurations() {
  static const auto kConfigurations = makeConfigurations();
  return kConfigurations;
}

const std::vector<Printer>& printers() {
  static const std::vector<Printer> kPrinters{
      {"50", "40", "20", "10"},
      {"0", "1", "9", "60"},
      {std::nullopt, std::nullopt, std::nullopt, std::nullopt},
      {std::nullopt, "25", std::nullopt, "61"},
      {"99999999999999999999", "-5", " 25mm", "abc"},
      {"%n%s", "+7", "-99999999999999999999", "12.9"},
  };
  return kPrinters;
}

std::string differenceOf(const Observation& expected, const Observation& got) {
  if (expected == got) return {};
  if (expected.result != got.result) return differenceIn("the result", expected.result, got.result);
  for (std::size_t panel = 0; panel < kPanels; ++panel) {
    const auto& one = expected.looks.at(panel);
    const auto& other = got.looks.at(panel);
    if (one.has_value() != other.has_value())
      return differenceIn("a view", one.has_value(), other.has_value());
    if (one && *one != *other) return "panel " + std::to_string(panel) + ", " + differenceOf(*one, *other);
  }
  for (std::size_t job = 0; job < kJobs; ++job) {
    const auto difference =
        differenceIn("the print settings", textOf(expected.jobs.at(job)), textOf(got.jobs.at(job)));
    if (!difference.empty()) return "job " + std::to_string(job) + ", " + difference;
  }
  return "the observations differ";
}

}  // namespace tandemtrim::sequences
