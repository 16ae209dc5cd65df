#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// The bundles, printers and jobs of a sequence of calls, and the state that is observed after a call. The
/// panel and its model share these types.
namespace tandemtrim::sequences {

inline constexpr std::size_t kSettings = 7;
inline constexpr std::size_t kFirstMargin = 3;
inline constexpr std::size_t kSides = 4;
inline constexpr std::size_t kMenus = 2;
inline constexpr std::size_t kPanels = 2;
inline constexpr std::size_t kJobs = 2;

using Text = std::optional<std::string>;

/// A bundle: the content of its property list and its string table. Numbers are texts as written there.
struct Configuration {
  std::array<Text, kSettings> defaults{"Off", "LongEdgeFeed", "Center", "5", "6", "7", "8"};
  std::array<Text, kSettings> keys{"MVTandemTrim", "MVImageDirectionPriority", "MVPrintPosition",
                                   "MVTopMargin",  "MVBottomMargin",           "MVLeftMargin",
                                   "MVRightMargin"};
  Text min = "0";
  Text max = "60";
  Text limit = "30";
  Text kind = "a kind";
  Text minToken = "[min]";
  Text maxToken = "[max]";
  std::map<std::string, std::string> strings;
};

/// A printer: the largest margin of each side as its PPD has it, in the order top, bottom, left, right;
/// nullopt for an attribute that it lacks.
using Printer = std::array<Text, kSides>;

/// The bundles and printers that sequences choose from.
const std::vector<Configuration>& configurations();
const std::vector<Printer>& printers();

struct MenuLook {
  std::vector<std::pair<std::string, Text>> items;
  std::optional<std::size_t> selected = 0;
  bool enabled = true;
  bool operator==(const MenuLook&) const = default;
};

struct MarginLook {
  std::string box = "0";
  std::string stepper = "0";
  double least = 0;
  double largest = 100;
  bool boxEnabled = true;
  bool stepperEnabled = true;
  bool operator==(const MarginLook&) const = default;
};

/// A loaded view as a user sees it. Menus: direction, position. Labels: of the two menus, of the four
/// boxes, of the four ranges.
struct Look {
  int check = 0;
  std::string checkTitle;
  std::string buttonTitle;
  bool buttonEnabled = true;
  std::array<MenuLook, kMenus> menus;
  std::array<MarginLook, kSides> margins;
  std::array<std::string, kMenus + 2 * kSides> labels;
  std::array<bool, kMenus + 2 * kSides> dimmed{};
  bool operator==(const Look&) const = default;
};

/// A job's print settings in their order.
using Job = std::vector<std::pair<std::string, std::string>>;

/// The state that is observed after a call.
struct Observation {
  /// The result of the call as a text; "raised" for an exception.
  std::string result;
  /// By panel; nullopt without a panel or before its view is requested.
  std::array<std::optional<Look>, kPanels> looks;
  std::array<Job, kJobs> jobs;
  bool operator==(const Observation&) const = default;
};

/// The first thing that differs, in words; empty for equal observations.
std::string differenceOf(const Observation& expected, const Observation& got);

}  // namespace tandemtrim::sequences
