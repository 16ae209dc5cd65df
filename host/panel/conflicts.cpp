#include "host/panel/conflicts.hpp"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

#include "host/job/legality.hpp"
#include "platform/integer_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;

std::span<const ppd_const_t> constraintsOf(const ppd_file_t& ppd) {
  return {ppd.consts, static_cast<std::size_t>(std::max(ppd.num_consts, 0))};
}

// A constraint without a choice applies to every choice but these.
bool isOff(const std::string& choice) {
  return isSameKeyword(choice, "None") || isSameKeyword(choice, "Off") || isSameKeyword(choice, "False");
}

bool isMarked(ppd_file_t& ppd, const char* option, const char* choice) {
  const auto* const marked = ppdFindMarkedChoice(&ppd, option);
  if (marked == nullptr) return false;
  return *choice == '\0' ? !isOff(marked->choice) : isSameKeyword(marked->choice, choice);
}

const PanelSetting* settingOf(const std::vector<PanelSetting>& settings, const std::string& keyword) {
  const auto setting = std::ranges::find_if(
      settings, [&](const PanelSetting& known) { return isSameKeyword(known.keyword, keyword); });
  return setting == settings.end() ? nullptr : &*setting;
}

std::string titleOfValue(const PanelSetting& setting) {
  const auto choice = std::ranges::find(setting.choices, setting.value, &platform::SettingChoice::value);
  return choice == setting.choices.end() ? setting.value : choice->title;
}

Conflict conflictWith(ppd_file_t& ppd, const PanelSetting& setting, const char* other,
                      const std::vector<PanelSetting>& settings) {
  Conflict conflict{setting.title, titleOfValue(setting), other, ""};
  if (const auto* const second = settingOf(settings, other)) {
    conflict.otherOption = second->title;
    conflict.otherChoice = titleOfValue(*second);
  } else {
    conflict.otherOption = ppdFindOption(&ppd, other)->text;
    conflict.otherChoice = ppdFindMarkedChoice(&ppd, other)->text;
  }
  return conflict;
}

std::int64_t lengthOf(const PanelSetting& margin) {
  return std::max<std::int64_t>(platform::integerValue(margin.value), 0);
}

// The margins that trim all of a length: each that does so alone, else both if their sum does; empty if
// neither.
std::vector<const PanelSetting*> trimmingAll(const std::vector<PanelSetting>& settings,
                                             PanelSetting::Edge edge, PanelSetting::Edge opposite,
                                             double length) {
  std::vector<const PanelSetting*> pair;
  double sum = 0;
  for (const auto side : {edge, opposite}) {
    const auto margin = std::ranges::find(settings, side, &PanelSetting::trimmedEdge);
    if (margin == settings.end()) continue;
    pair.push_back(&*margin);
    sum += static_cast<double>(lengthOf(*margin));
  }
  auto alone = pair;
  std::erase_if(alone, [&](const auto* margin) { return static_cast<double>(lengthOf(*margin)) < length; });
  if (!alone.empty()) return alone;
  return sum < length ? std::vector<const PanelSetting*>{} : pair;
}

std::vector<const PanelSetting*> trimmingAll(const std::vector<PanelSetting>& settings, const Paper& paper) {
  using enum PanelSetting::Edge;
  auto margins = trimmingAll(settings, top, bottom, paper.height);
  const auto across = trimmingAll(settings, left, right, paper.width);
  margins.insert(margins.end(), across.begin(), across.end());
  return margins;
}

}  // namespace

std::vector<Conflict> conflictsOf(ppd_file_t& ppd, const std::vector<PanelSetting>& settings,
                                  const Options& others) {
  ppdMarkDefaults(&ppd);
  const auto mark = [&](const std::string& keyword, const std::string& value) {
    // Marking a custom value would change the PPD.
    auto* const option = ppdFindOption(&ppd, keyword.c_str());
    if (option != nullptr && ppdFindChoice(option, value.c_str()) != nullptr && !value.starts_with("Custom"))
      ppdMarkOption(&ppd, keyword.c_str(), value.c_str());
  };
  for (const auto& [keyword, value] : others) mark(keyword, value);
  for (const auto& setting : settings) mark(setting.keyword, setting.value);

  std::vector<Conflict> conflicts;
  // A PPD usually lists each conflict in both directions.
  const auto add = [&](const char* one, const char* other) {
    const auto* const setting = settingOf(settings, one);
    if (setting == nullptr) return false;
    const auto conflict = conflictWith(ppd, *setting, other, settings);
    const Conflict reversed{conflict.otherOption, conflict.otherChoice, conflict.setting, conflict.value};
    if (std::ranges::find(conflicts, conflict) == conflicts.end() &&
        std::ranges::find(conflicts, reversed) == conflicts.end())
      conflicts.push_back(conflict);
    return true;
  };
  for (const auto& [option1, choice1, option2, choice2] : constraintsOf(ppd)) {
    if (!isMarked(ppd, option1, choice1) || !isMarked(ppd, option2, choice2)) continue;
    if (!add(option1, option2)) add(option2, option1);
  }
  return conflicts;
}

std::vector<Conflict> conflictsWithPaper(const std::vector<PanelSetting>& settings, const Paper& paper) {
  std::vector<Conflict> conflicts;
  if (!isSwitchedOn(settings)) return conflicts;
  for (const auto* margin : trimmingAll(settings, paper))
    conflicts.push_back({margin->title, margin->value + ' ' + margin->unit, paper.title, paper.name});
  return conflicts;
}

bool canConflictWithPaper(std::vector<PanelSetting> settings, const Paper& paper) {
  for (auto& setting : settings) {
    if (setting.trimmedEdge != PanelSetting::Edge::none)
      setting.value = std::to_string(std::max(setting.maximum, lengthOf(setting)));
  }
  return !trimmingAll(settings, paper).empty();
}

bool hasConstraints(const ppd_file_t& ppd, const std::vector<std::string>& keywords) {
  return std::ranges::any_of(constraintsOf(ppd), [&](const ppd_const_t& constraint) {
    return std::ranges::any_of(keywords, [&](const std::string& keyword) {
      return isSameKeyword(keyword, constraint.option1) || isSameKeyword(keyword, constraint.option2);
    });
  });
}

}  // namespace tandemtrim::host
