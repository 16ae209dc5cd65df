#include "host/cli/completion.hpp"

#include <csignal>
#include <functional>

#include <unistd.h>

#include "host/cli/arguments/value_readers.hpp"
#include "host/cli/presets.hpp"
#include "host/cups/connection/login.hpp"
#include "host/cups/ppd.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/printer_facts.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/failure.hpp"
#include "host/panel/job_settings.hpp"
#include "host/presets/preset_folders.hpp"

namespace tandemtrim::host {
namespace {

using Words = std::vector<std::string>;

constexpr unsigned kSecondsForCompletion = 2;

// Ends the program after this time, however many requests it makes.
void endInTime() {
  std::signal(SIGALRM, [](int) { _exit(kSucceeded); });
  alarm(kSecondsForCompletion);
}

// The result of `words` for the name and the PPD of the command line's printer.
Words wordsFor(const CommandLine& line,
               const std::function<Words(const std::string& printer, ppd_file_t* ppd)>& words) {
  if (line.ppd) return words("", openPpd(*line.ppd, *line.ppd).get());
  const Connection connection(line.server);
  const auto printer = findPrinter(connection, line.printer);
  return words(printer.name, queuePpd(connection, printer).get());
}

void ignore(const std::string& /*message*/) {}

// The settings' names with an equals sign and, once that is typed, with each of their choices.
Words settingWords(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                   const std::string& typed) {
  Words words;
  const auto panel = settleSettings(line, printer, ppd, {}, {}, ignore).panel;
  if (!panel) return words;
  for (const auto& setting : panel->settings) {
    const auto name = setting.name + '=';
    if (!typed.starts_with(name))
      words.push_back(name);
    else
      for (const auto& choice : setting.choices) words.push_back(name + choice.value);
  }
  return words;
}

Words presetNames(const CommandLine& line, const std::string& printer, ppd_file_t* ppd) {
  Words words;
  for (const auto& kept : presetsOf(familyOf(line, printer, ppd)).presets) words.push_back(kept.preset.name);
  return words;
}

// The possible values of the unfinished option.
Words values(const Unfinished& unfinished, const std::string& typed) {
  if (unfinished.option == "-d") return printerNames(Connection(unfinished.line.server));
  if (unfinished.option == "--applications") {
    Words words;
    for (const auto& [word, meaning] : kApplicationsTexts) words.emplace_back(word);
    return words;
  }
  const auto& line = unfinished.line;
  if (unfinished.option == "--set") {
    return wordsFor(line,
                    [&](const auto& printer, auto* ppd) { return settingWords(line, printer, ppd, typed); });
  }
  if (unfinished.option == "--preset" || unfinished.option == "--save-preset" ||
      unfinished.option == "--delete-preset") {
    return wordsFor(line, [&](const auto& printer, auto* ppd) { return presetNames(line, printer, ppd); });
  }
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
