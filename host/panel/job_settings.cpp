#include "host/panel/job_settings.hpp"

#include "adapters/linux/print_settings.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/panel/panel_options.hpp"
#include "host/panel/plugin_loader.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

JobSettings settleAtPanel(const CommandLine& line, ppd_file_t* ppd, const std::string& path,
                          const Options& ofQueue, const Options& starting, const Report& report) {
  const auto bundle = openBundle(path, report);
  platform::linux::PrintSettings settings;
  const auto keywords = bundle.info.optionKeywords();
  storeOptions(starting, keywords, settings);
  JobSettings settled;
  settled.panel = playPanel(bundle, settings, ppd, printersDefaults(keywords, ppd, ofQueue), line, report);
  for (const auto& [keyword, value] : settings.entries()) settled.options.push_back({keyword, value});
  return settled;
}

JobSettings settleWithoutPanel(const CommandLine& line, const std::string& printer, const std::string& reason,
                               const Options& starting, const Report& report) {
  const auto fact = printer + " has no panel, since " + reason;
  if (!line.inputs.empty())
    throw Failure(fact + "; nothing was sent. Leave --set and --restore-defaults out");
  if (line.files.empty()) report(fact);
  JobSettings settled{starting, std::nullopt};
  std::erase_if(settled.options, [&, keywords = keywordsOfPanels(line.plugin)](const Option& option) {
    const bool belongsToPanel = spelledAsIn(keywords, option.keyword).has_value();
    if (belongsToPanel) report(leftOutText(printer, option));
    return belongsToPanel;
  });
  return settled;
}

}  // namespace

std::string reasonForNoPanel(const ppd_file_t* ppd) {
  if (ppd != nullptr) return "its PPD names none";
  return "it has no PPD that names one, and no panel or more than one is installed (choose one with "
         "--plugin)";
}

std::string withoutPpdText(const std::string& printer) {
  return printer +
         " has no PPD: the limits are the panel's own, and this queue's filters may not know the panel's "
         "options";
}

std::string leftOutText(const std::string& printer, const Option& option) {
  return printer + " has no panel; " + shortText(optionText(option)) + " is left out";
}

JobSettings settleSettings(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                           const Options& ofQueue, const Options& starting, const Report& report) {
  try {
    const auto bundle = bundleOfPrinter(line.plugin, ppd);
    if (!bundle) return settleWithoutPanel(line, printer, reasonForNoPanel(ppd), starting, report);
    if (ppd == nullptr) report(withoutPpdText(printer));
    return settleAtPanel(line, ppd, bundle->string(), ofQueue, starting, report);
  } catch (const PluginFailure& failure) {
    if (!line.withoutPanel) {
      throw Failure(std::string(failure.what()) +
                    "; nothing was sent. Install it again, name another with --plugin, or print "
                    "with --without-panel");
    }
    if (!line.inputs.empty()) {
      throw Failure(std::string(failure.what()) +
                    "; --set and --restore-defaults need the panel, so nothing was sent");
    }
    report("warning: the settings of the printer's panel are not available: " + std::string(failure.what()));
    return {starting, std::nullopt};
  }
}

}  // namespace tandemtrim::host
