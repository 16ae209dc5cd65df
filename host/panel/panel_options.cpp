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

}  // namespace tandemtrim::host
