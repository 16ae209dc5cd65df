// The input is the program's arguments, each ended by a byte 0. Either a mistake is reported, or the command
// line can be written as arguments again and read with the same result.
#include <algorithm>
#include <map>

#include "fuzz/support/target.hpp"
#include "host/cli/arguments/command_line_parser.hpp"
#include "host/failure.hpp"

namespace tandemtrim::fuzz {
namespace {

using namespace host;

const std::map<Applications, std::string> kApplicationWords{
    {Applications::on, "on"}, {Applications::off, "off"}, {Applications::status, "status"}};

std::vector<std::string> argumentsFrom(std::string_view input) {
  std::vector<std::string> arguments;
  while (!input.empty()) {
    const auto argument = input.substr(0, input.find('\0'));
    arguments.emplace_back(argument);
    input.remove_prefix(std::min(argument.size() + 1, input.size()));
  }
  return arguments;
}

std::vector<std::string> argumentsOf(const CommandLine& line) {
  std::vector<std::string> arguments;
  const auto addOption = [&](const char* name, const std::optional<std::string>& value) {
    if (value) arguments.insert(arguments.end(), {name, *value});
  };
  const auto addFlag = [&](const char* name, bool flag) {
    if (flag) arguments.emplace_back(name);
  };
  addOption("-h", line.server);
  addOption("-U", line.user);
  addOption("-d", line.printer);
  addOption("-t", line.title);
  addOption("--ppd", line.ppd);
  addOption("--plugin", line.plugin);
  addOption("--preset", line.preset);
  addOption("--save-preset", line.savePreset);
  addOption("--delete-preset", line.deletePreset);
  for (const auto& option : line.options) addOption("-o", optionText(option));
  for (const auto& input : line.inputs) {
    if (input.text) {
      addOption("--set", input.name + "=" + *input.text);
    } else {
      arguments.emplace_back("--restore-defaults");
    }
  }
  addFlag("-E", line.encrypted);
  addFlag("-s", line.silent);
  addFlag("--lenient", line.lenient);
  addFlag("--list", line.list);
  addFlag("--summary", line.summary);
  addFlag("--json", line.json);
  addFlag("--force", line.force);
  addFlag("--save-as-default", line.saveAsDefault);
  addFlag("--reset-defaults", line.resetDefaults);
  addFlag("--list-presets", line.listPresets);
  addFlag("--all-gtk", line.allGtk);
  addFlag("--without-panel", line.withoutPanel);
  addFlag("--wait", line.wait);
  addFlag("--no-notification", line.withoutNotification);
  addFlag("--verbose", line.verbose);
  if (line.applications)
    arguments.insert(arguments.end(), {"--applications", kApplicationWords.at(*line.applications)});
  if (line.dialog) arguments.emplace_back(*line.dialog ? "--dialog" : "--no-dialog");
  arguments.emplace_back("--");
  arguments.insert(arguments.end(), line.files.begin(), line.files.end());
  return arguments;
}

void examineOptions(const Options& options) {
  for (auto option = options.begin(); option != options.end(); ++option) {
    require(!option->keyword.empty(), "an option has a keyword");
    require(std::none_of(options.begin(), option,
                         [&](const Option& other) { return isSameKeyword(other.keyword, option->keyword); }),
            "of options with the same keyword the last one counts");
  }
}

}  // namespace

void examine(std::string_view input) {
  std::variant<CommandLine, Information> parsed;
  try {
    parsed = parseCommandLine(argumentsFrom(input));
  } catch (const Failure& mistake) {
    require(mistake.exitStatus() == kWrongCommandLine && *mistake.what() != '\0', "a mistake is reported");
    return;
  }
  if (const auto* information = std::get_if<Information>(&parsed)) {
    require(!information->text.empty(), "information is shown");
    return;
  }
  const auto& line = std::get<CommandLine>(parsed);
  examineOptions(line.options);
  for (const auto& panelInput : line.inputs)
    require(!panelInput.name.empty(), "an input for the panel has a name");
  require(std::get<CommandLine>(parseCommandLine(argumentsOf(line))) == line,
          "a command line that is written again is read as the same");
}

}  // namespace tandemtrim::fuzz
