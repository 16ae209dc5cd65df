#include "host/dialog/settings/document_layout.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// A choice in the tabs: GTK's key, and the value that changes nothing.
struct TabChoice {
  const char* key;
  // Null where the key must be absent.
  const char* neutral;
  // The smallest extent at which the program applies it.
  LaidOut by;
};
constexpr std::array<TabChoice, 10> kTabChoices{
    {{GTK_PRINT_SETTINGS_PRINT_PAGES, "all", LaidOut::pages},
     {GTK_PRINT_SETTINGS_PAGE_RANGES, nullptr, LaidOut::pages},
     {GTK_PRINT_SETTINGS_SCALE, "100", LaidOut::pages},
     {GTK_PRINT_SETTINGS_N_COPIES, "1", LaidOut::everything},
     {GTK_PRINT_SETTINGS_COLLATE, "false", LaidOut::everything},
     {GTK_PRINT_SETTINGS_REVERSE, "false", LaidOut::everything},
     {GTK_PRINT_SETTINGS_PAGE_SET, "all", LaidOut::everything},
     {GTK_PRINT_SETTINGS_NUMBER_UP, "1", LaidOut::everything},
     {GTK_PRINT_SETTINGS_NUMBER_UP_LAYOUT, nullptr, LaidOut::everything},
     {GTK_PRINT_SETTINGS_ORIENTATION, nullptr, LaidOut::pages}}};

// A job's option, and the value that changes nothing; null where the option must be absent.
struct LayoutOption {
  const char* keyword;
  const char* neutral;
  LaidOut by;
};
constexpr std::array<LayoutOption, 9> kLayoutOptions{{{"page-ranges", nullptr, LaidOut::pages},
                                                      {"landscape", nullptr, LaidOut::pages},
                                                      {"orientation-requested", nullptr, LaidOut::pages},
                                                      {"copies", "1", LaidOut::everything},
                                                      {"Collate", nullptr, LaidOut::everything},
                                                      {"OutputOrder", "Normal", LaidOut::everything},
                                                      {"page-set", "all", LaidOut::everything},
                                                      {"number-up", "1", LaidOut::everything},
                                                      {"number-up-layout", nullptr, LaidOut::everything}}};

}  // namespace

std::map<std::string, std::string> settingsToLayOut(const TabSettings& tabs, LaidOut laidOut) {
  const auto settings = tabs.settings->copy();
  settings->set_orientation(tabs.setup->get_orientation());
  std::map<std::string, std::string> entries;
  for (const auto& [key, neutral, by] : kTabChoices) {
    const bool isAppliedByProgram = laidOut >= by && settings->has_key(key);
    if (isAppliedByProgram) {
      entries[key] = settings->get(key);
    } else if (neutral != nullptr) {
      entries[key] = neutral;
    }
  }
  if (entries[GTK_PRINT_SETTINGS_PRINT_PAGES] != "ranges") entries.erase(GTK_PRINT_SETTINGS_PAGE_RANGES);
  return entries;
}

void refusePartInFile(const Gtk::PrintSettings& settings, LaidOut laidOut) {
  constexpr std::array<const char*, 3> kParts{GTK_PRINT_SETTINGS_PRINT_PAGES, GTK_PRINT_SETTINGS_PAGE_SET,
                                              GTK_PRINT_SETTINGS_NUMBER_UP};
  for (const auto& [key, neutral, by] : kTabChoices) {
    if (laidOut >= by || std::ranges::count(kParts, std::string_view(key)) == 0) continue;
    const auto value = settings.get(key).raw();
    if (!value.empty() && value != neutral)
      throw Failure(Trouble::userMessage, Fact(FactText{kWholeFileText}, {}));
  }
}

void removeLaidOut(Options& options, LaidOut laidOut) {
  for (const auto& [keyword, neutral, by] : kLayoutOptions) {
    if (laidOut < by) continue;
    options = withoutKeywords(std::move(options), {keyword});
    if (neutral != nullptr) options.push_back({keyword, neutral});
  }
}

std::vector<std::string> keywordsLaidOut(LaidOut laidOut) {
  std::vector<std::string> keywords;
  for (const auto& option : kLayoutOptions)
    if (laidOut >= option.by) keywords.emplace_back(option.keyword);
  return keywords;
}

}  // namespace tandemtrim::host
