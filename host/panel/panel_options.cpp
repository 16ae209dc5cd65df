#include "host/panel/panel_options.hpp"

#include "host/panel/bundle_search.hpp"

namespace tandemtrim::host {

void storeOptions(const Options& options, const std::vector<std::string>& keywords,
                  platform::PrintSettings& settings) {
  for (const auto& [keyword, value] : options)
    settings.PMPrintSettingsSetValue(spelledAsIn(keywords, keyword).value_or(keyword), value, false);
}

Options storedOptions(const platform::PrintSettings& settings, const std::vector<std::string>& keywords) {
  Options options;
  for (const auto& keyword : keywords) {
    std::optional<std::string> value;
    settings.PMPrintSettingsGetValue(keyword, value);
    if (value) options.push_back({keyword, *value});
  }
  return options;
}

Options printersDefaults(const std::vector<std::string>& keywords, ppd_file_t* ppd, const Options& ofQueue) {
  Options defaults;
  for (const auto& keyword : keywords) {
    auto* const option = ppd == nullptr ? nullptr : ppdFindOption(ppd, keyword.c_str());
    // libcups ignores a default that is not one of the choices.
    if (option != nullptr && ppdFindChoice(option, option->defchoice) != nullptr)
      defaults.push_back({keyword, option->defchoice});
  }
  for (const auto& [keyword, value] : ofQueue) {
    if (auto spelling = spelledAsIn(keywords, keyword)) setOption(defaults, {*std::move(spelling), value});
  }
  return defaults;
}

}  // namespace tandemtrim::host
