#include "host/dialog/presets/chosen_preset.hpp"

#include <algorithm>

namespace tandemtrim::host {
namespace {

// Whether the options include all of `asked`, with the same values.
bool includesAll(const Options& options, const Options& asked) {
  return std::ranges::all_of(asked, [&](const Option& option) {
    return std::ranges::any_of(options, [&](const Option& other) {
      return isSameKeyword(other.keyword, option.keyword) && other.value == option.value;
    });
  });
}

// Whether the options have this one with another value.
bool overrides(const Options& options, const Option& option) {
  return std::ranges::any_of(options, [&](const Option& other) {
    return isSameKeyword(other.keyword, option.keyword) && other.value != option.value;
  });
}

}  // namespace

Options optionsOf(const ChosenPreset& chosen, const Options& asked) {
  auto options = withoutKeywords(chosen.preset.options, chosen.refused);
  if (!chosen.isByHand)
    std::erase_if(options, [&](const Option& option) { return overrides(asked, option); });
  return options;
}

bool isChanged(const ChosenPreset& chosen, const Options& panel, const std::optional<Options>& pages) {
  if (!includesAll(panel, chosen.preset.panel) || !chosen.refused.empty()) return true;
  if (chosen.preset.options.empty()) return false;
  return !pages || !chosen.pages || pages->size() != chosen.pages->size() ||
         !includesAll(*pages, *chosen.pages);
}

}  // namespace tandemtrim::host
