#include "host/dialog/panel/preset_list.hpp"

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"

namespace tandemtrim::host {

std::string titleOf(const PresetList& list) {
  if (!list.chosen) return localized(kNoPresetText);
  return list.isChanged ? filled(localized(kChangedPresetText), {{"[name]", *list.chosen}}) : *list.chosen;
}

LivePresetActions liveActions(const PresetList& list) {
  const bool isChosen = list.chosen.has_value();
  const bool isOwn = isChosen && list.isOwn;
  return {isOwn && list.isChanged, isChosen && list.isChanged, isOwn, isChosen};
}

std::string unmarked(const std::string& name) {
  std::string text;
  for (const char byte : name) text += byte == '_' ? "__" : std::string(1, byte);
  return text;
}

}  // namespace tandemtrim::host
