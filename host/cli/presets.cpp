#include "host/cli/presets.hpp"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/failure.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/plain_text.hpp"
#include "host/presets/preset_folders.hpp"

namespace tandemtrim::host {
std::string familyOf(const CommandLine& line, const std::string& printer, ppd_file_t* ppd) {
  const auto bundle = bundleOfPrinter(line.plugin, ppd);
  if (!bundle)
    throw Failure("only printers with a panel have presets; " + printer + " has no panel, since " +
                  reasonForNoPanel(ppd));
  return bundle->stem();
}

void listPresets(const CommandLine& line, const std::string& family, std::ostream& out,
                 const Report& report) {
  using Json = nlohmann::ordered_json;
  const auto [presets, faults] = presetsOf(family);
  if (line.json) {
    auto list = Json::array();
    for (const auto& [preset, isOwn] : presets) {
      Json entry{{"name", preset.name}, {"readOnly", !isOwn}};
      entry.update(Json::parse(presetText(preset)));
      list.push_back(std::move(entry));
    }
    out << list.dump(2, ' ', true, Json::error_handler_t::replace) << '\n';
  } else {
    for (const auto& [preset, isOwn] : presets) out << preset.name << (isOwn ? "" : "  (read-only)") << '\n';
  }
  for (const auto& fault : faults) {
    if (const auto fact = setAside(fault)) report(fact->english());
  }
  if (!faults.empty()) throw Failure("not all presets are listed");
}

Preset presetOf(const CommandLine& line, const std::optional<Preset>& base, const JobSettings& settings) {
  Preset preset{*line.savePreset, {}, base ? base->options : Options{}};
  std::vector<std::string> keywords;
  if (settings.panel) {
    for (const auto& setting : settings.panel->settings) keywords.push_back(setting.keyword);
  }
  for (const auto& option : settings.options) {
    const bool belongsToPanel = std::ranges::count(keywords, option.keyword) != 0;
    if (belongsToPanel) setOption(preset.panel, option);
  }
  if (settings.panel) preset.panel = withoutKeywords(preset.panel, settings.panel->illegalDefaults);
  for (const auto& option : withoutKeywords(withoutThoseOfOneJob(line.options), keywords))
    setOption(preset.options, option);
  return preset;
}

}  // namespace tandemtrim::host
