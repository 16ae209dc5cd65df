#include "host/panel/job_settings.hpp"

#include "adapters/linux/print_settings.hpp"
#include "host/cups/ppd.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/panel/plugin_loader.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

platform::linux::PrintSettings settingsFrom(const Options& options) {
  platform::linux::PrintSettings settings;
  for (const auto& [keyword, value] : options) settings.PMPrintSettingsSetValue(keyword, value, false);
  return settings;
}

JobSettings settleAtPanel(const CommandLine& line, ppd_file_t* ppd, const std::string& path,
                          const Options& starting, const Note& note) {
  const auto bundle = openBundle(path, note);
  const auto keywords = bundle.info.optionKeywords();
  Options spelled;
  for (const auto& [keyword, value] : starting)
    setOption(spelled, {spelledAsIn(keywords, keyword).value_or(keyword), value});
  auto settings = settingsFrom(spelled);
  JobSettings settled;
  settled.panel = playPanel(bundle, settings, ppd, line.inputs, line.force, note);
  for (const auto& [keyword, value] : settings.entries()) settled.options.push_back({keyword, value});
  return settled;
}

JobSettings settleWithoutPanel(const CommandLine& line, const std::string& printer, const std::string& reason,
                               const Options& starting, const Note& note) {
  const auto fact = printer + " has no panel, since " + reason;
  if (!line.inputs.empty())
    throw Failure(fact + "; nothing was sent. Leave --set and --restore-defaults out");
  if (line.files.empty()) note(fact);
  JobSettings settled{starting, std::nullopt};
  std::erase_if(settled.options, [&, keywords = keywordsOfPanels(line.plugin)](const Option& option) {
    const bool isPanels = spelledAsIn(keywords, option.keyword).has_value();
    if (isPanels) note(printer + " has no panel; " + shortText(optionText(option)) + " is left out");
    return isPanels;
  });
  return settled;
}

}  // namespace

std::string reasonForNoPanel(const ppd_file_t* ppd) {
  if (ppd != nullptr) return "its PPD names none";
  return "it has no PPD to name one, and not exactly one panel is installed (--plugin names one)";
}

std::string withoutPpdText(const std::string& printer) {
  return printer +
         " has no PPD: the limits are the panel's own, and this queue's filters may not know the panel's "
         "options";
}

JobSettings settleSettings(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                           const Options& starting, const Note& note) {
  try {
    const auto bundle = bundleOfPrinter(line.plugin, ppd);
    if (!bundle) return settleWithoutPanel(line, printer, reasonForNoPanel(ppd), starting, note);
    if (ppd == nullptr) note(withoutPpdText(printer));
    return settleAtPanel(line, ppd, bundle->string(), starting, note);
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
    note("warning: the settings of the printer's panel are not available: " + std::string(failure.what()));
    return {starting, std::nullopt};
  }
}

}  // namespace tandemtrim::host
