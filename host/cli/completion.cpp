#include "host/cli/completion.hpp"

#include <cstdlib>
#include <string_view>

#include "host/cli/command_line_parser.hpp"
#include "host/cups/connection/login.hpp"
#include "host/cups/ppd.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/printer_facts.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/failure.hpp"
#include "host/panel/job_settings.hpp"

namespace tandemtrim::host {
namespace {

using Words = std::vector<std::string>;

constexpr const char* kSecondsAtKey = "2";

// The word behind the last one of this name.
std::optional<std::string> valueOf(const Words& words, std::string_view name) {
  std::optional<std::string> value;
  for (std::size_t i = 0; i + 2 < words.size(); ++i) {
    if (words[i] == name) value = words[i + 1];
  }
  return value;
}

// The command line as far as it says which panel there is.
CommandLine lineOf(const Words& words) {
  CommandLine line;
  line.server = valueOf(words, "-h");
  line.printer = valueOf(words, "-d");
  line.ppd = valueOf(words, "--ppd");
  line.plugin = valueOf(words, "--plugin");
  return line;
}

std::vector<platform::PanelSetting> panelSettings(const CommandLine& line) {
  const auto ignore = [](const std::string&) {};
  const auto settingsWith = [&](const std::string& printer, ppd_file_t* ppd) {
    const auto panel = settleSettings(line, printer, ppd, {}, {}, ignore).panel;
    return panel ? panel->settings : std::vector<platform::PanelSetting>{};
  };
  if (line.ppd) return settingsWith("", openPpd(*line.ppd, *line.ppd).get());
  const Connection connection(line.server);
  const auto printer = findPrinter(connection, line.printer);
  return settingsWith(printer.name, queuePpd(connection, printer).get());
}

// A name with an equals sign and, once that is typed, one of its choices behind it.
Words settingWords(const std::vector<platform::PanelSetting>& settings, const std::string& typed) {
  Words words;
  for (const auto& setting : settings) {
    const auto name = setting.name + '=';
    if (!typed.starts_with(name))
      words.push_back(name);
    else
      for (const auto& choice : setting.choices) words.push_back(name + choice.value);
  }
  return words;
}

Words candidates(const Words& words) {
  const auto& typed = words.back();
  const std::string before = words.size() > 1 ? words[words.size() - 2] : "";
  const auto line = lineOf(words);
  if (before == "-d") return printerNames(Connection(line.server));
  if (before == "--set") return settingWords(panelSettings(line), typed);
  return typed.starts_with('-') ? optionNames() : Words{};
}

}  // namespace

Words completions(const Words& words) {
  setenv("TANDEM_TRIM_TIMEOUT", kSecondsAtKey, 0);
  answerLogins([](const LoginQuestion&) { return std::nullopt; });
  try {
    auto found = words.empty() ? Words{} : candidates(words);
    std::erase_if(found, [&](const std::string& word) { return !word.starts_with(words.back()); });
    return found;
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace tandemtrim::host
