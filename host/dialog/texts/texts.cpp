#include "host/dialog/texts/texts.hpp"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <dlfcn.h>

#include "adapters/linux/bundle.hpp"
#include "host/filled_text.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;

// The bundle beside the module that this code is part of.
std::string bundlePath() {
  Dl_info module{};
  if (dladdr(reinterpret_cast<const void*>(&bundlePath), &module) == 0) return {};
  return std::filesystem::absolute(module.dli_fname).parent_path() / "Dialog.bundle";
}

// The results of `text` for the parts, with the separator between them.
template <class Parts, class Text>
std::string joined(const Parts& parts, std::string_view separator, Text text) {
  std::string whole;
  bool isFirst = true;
  for (const auto& part : parts)
    whole.append(std::exchange(isFirst, false) ? "" : separator).append(text(part));
  return whole;
}

// The values to choose from as the panel shows them, or a number's limits.
std::string allowedText(const PanelSetting& setting) {
  if (setting.kind == PanelSetting::Kind::number) {
    return filled(localized(kRangeText),
                  {{"[min]", std::to_string(setting.minimum)}, {"[max]", std::to_string(setting.maximum)}});
  }
  return joined(setting.choices, localized(kListSeparatorText),
                [](const auto& choice) { return choice.title; });
}

}  // namespace

std::string localized(std::string_view text) {
  static const auto bundle = [] {
    std::string reason;
    return platform::linux::Bundle::open(bundlePath(), reason);
  }();
  return bundle ? bundle->localizedStringForKey(text, "", std::nullopt) : std::string(text);
}

std::vector<std::string> problemTexts(const std::vector<IllegalValue>& values,
                                      const std::vector<Conflict>& conflicts) {
  std::vector<std::string> texts;
  texts.reserve(values.size() + conflicts.size());
  for (const auto& illegal : values)
    texts.push_back(filled(localized(kIllegalValueText), {{"[name]", illegal.setting.title},
                                                          {"[value]", shortText(illegal.setting.value)},
                                                          {"[allowed]", allowedText(illegal.setting)}}));
  for (const auto& conflict : conflicts)
    texts.push_back(filled(localized(kConflictText), {{"[name]", conflict.setting},
                                                      {"[value]", shortText(conflict.value)},
                                                      {"[other]", conflict.otherOption},
                                                      {"[choice]", conflict.otherChoice}}));
  return texts;
}

std::string failureText(const Failure& failure) {
  const auto* const text =
      std::ranges::find(kTroubleTexts, failure.trouble(), [](const auto& entry) { return entry.first; });
  const auto fact = failure.fact().in(localized);
  return text == kTroubleTexts.end() ? fact : localized(text->second) + '\n' + fact;
}

std::string failuresText(const std::vector<Failure>& failures) {
  return joined(failures, "\n\n", failureText);
}

std::string helpText(const PluginBundle& bundle) {
  constexpr std::string_view kPanelHelpKey = "PanelHelp";
  auto ofPanel = bundle.resources->localizedStringForKey(kPanelHelpKey, "", std::nullopt);
  const auto ofHost = joined(kHelpTexts, "\n\n", localized);
  return ofPanel == kPanelHelpKey ? ofHost : ofPanel + "\n\n" + ofHost;
}

}  // namespace tandemtrim::host
