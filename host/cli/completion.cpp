#include "host/cli/completion.hpp"

#include <csignal>

#include <unistd.h>

#include "host/cli/arguments/value_readers.hpp"
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

constexpr unsigned kSecondsAtKey = 2;

// Whatever asks the server, and in however many steps.
void endInTime() {
  std::signal(SIGALRM, [](int) { _exit(kSucceeded); });
  alarm(kSecondsAtKey);
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

// What the value may be that begins so.
Words values(const Unfinished& unfinished, const std::string& typed) {
  if (unfinished.option == "-d") return printerNames(Connection(unfinished.line.server));
  if (unfinished.option == "--applications") {
    Words words;
    for (const auto& [word, meaning] : kApplicationsTexts) words.emplace_back(word);
    return words;
  }
  if (unfinished.option == "--set") return settingWords(panelSettings(unfinished.line), typed);
  return {};
}

Words candidates(const Unfinished& unfinished) {
  if (unfinished.isName) return optionNames();
  const auto before = unfinished.lastWord.substr(0, unfinished.valueAt);
  auto words = values(unfinished, unfinished.lastWord.substr(unfinished.valueAt));
  for (auto& word : words) word.insert(0, before);
  return words;
}

}  // namespace

Words completions(const Unfinished& unfinished) {
  endInTime();
  answerLogins([](const LoginQuestion&) { return std::nullopt; });
  try {
    auto words = candidates(unfinished);
    std::erase_if(words, [&](const std::string& word) { return !word.starts_with(unfinished.lastWord); });
    return words;
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace tandemtrim::host
