#include "host/job_settings.hpp"

#include <algorithm>

#include "host/bundle_search.hpp"
#include "host/family.hpp"
#include "host/plain_text.hpp"
#include "host/plugin_loader.hpp"
#include "host/ppd.hpp"
#include "platform/linux/print_settings.hpp"

namespace tandemtrim::host {
namespace {

platform::linux::PrintSettings settingsFrom(const Options& options) {
  platform::linux::PrintSettings settings;
  for (const auto& [keyword, value] : options) settings.PMPrintSettingsSetValue(keyword, value, false);
  return settings;
}

std::string join(const std::vector<std::string>& names, const std::string& separator) {
  std::string joined;
  for (const auto& name : names) joined += (joined.empty() ? "" : separator) + name;
  return joined;
}

LoadedPlugin loadNamed(const CommandLine& line, const std::vector<std::string>& bundles, const Note& note) {
  const auto bundle = findBundle(line.plugin, bundles);
  if (!bundle) {
    throw PluginFailure("the plug-in " + join(bundles, " or ") +
                        (line.plugin ? " is not in " + *line.plugin : " is not installed"));
  }
  return loadPlugin(openBundle(bundle->string(), note), kMemoryModule);
}

JobSettings settleAtPanel(const CommandLine& line, ppd_file_t* ppd, const std::vector<std::string>& bundles,
                          const Options& starting, const Note& note) {
  const auto plugin = loadNamed(line, bundles, note);
  auto settings = settingsFrom(starting);
  JobSettings settled;
  settled.panel = playPanel(plugin, settings, ppd, line.inputs, line.force, note);
  for (const auto& [keyword, value] : settings.entries()) settled.options.push_back({keyword, value});
  return settled;
}

Options spelledAsByPanel(const Options& options) {
  Options spelled;
  for (const auto& [keyword, value] : options)
    setOption(spelled, {keywordOfPanel(keyword).value_or(keyword), value});
  return spelled;
}

JobSettings settleWithoutPanel(const CommandLine& line, const std::string& printer, const Options& starting,
                               const Note& note) {
  if (!line.inputs.empty()) {
    throw Failure(
        printer +
        " has no panel, since its PPD names none; nothing was sent. Leave --set and --restore-defaults out");
  }
  if (line.files.empty()) note(printer + " has no panel, since its PPD names none");
  JobSettings settled{starting, std::nullopt};
  std::erase_if(settled.options, [&](const Option& option) {
    const bool ofPanel = keywordOfPanel(option.keyword).has_value();
    if (ofPanel) note(printer + " has no panel; " + shortText(optionText(option)) + " is left out");
    return ofPanel;
  });
  return settled;
}

}  // namespace

std::string withoutPpdText(const std::string& printer) {
  return printer +
         " has no PPD: the limits are the panel's own, and this queue's filters may not know the panel's "
         "options";
}

JobSettings settleSettings(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                           const Options& starting, const Note& note) {
  const auto bundles = ppd != nullptr ? dialogExtensions(*ppd) : std::vector<std::string>{kDefaultBundle};
  if (bundles.empty()) return settleWithoutPanel(line, printer, starting, note);
  if (ppd == nullptr) note(withoutPpdText(printer));
  try {
    return settleAtPanel(line, ppd, bundles, spelledAsByPanel(starting), note);
  } catch (const PluginFailure& failure) {
    if (!line.withoutPanel) {
      throw Failure(
          std::string(failure.what()) +
          "; nothing was sent. Install it again, name another by --plugin, or go on by --without-panel");
    }
    if (!line.inputs.empty()) {
      throw Failure(std::string(failure.what()) +
                    "; --set and --restore-defaults need the panel, so nothing was sent");
    }
    note("warning: Tandem Trim settings are not available: " + std::string(failure.what()));
    return {starting, std::nullopt};
  }
}

}  // namespace tandemtrim::host
