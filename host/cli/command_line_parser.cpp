#include "host/cli/command_line_parser.hpp"

#include <algorithm>
#include <charconv>

#include <CLI/CLI.hpp>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kMostCopies = 9999;

// A check for CLI11, which says what is wrong, or nothing.
std::string copiesMistake(const std::string& text) {
  int copies = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), copies);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  if (isNumber && copies >= 1 && copies <= kMostCopies) return {};
  return "\"" + text + "\" is no number from 1 to " + std::to_string(kMostCopies);
}

// "name=text" as an act at the panel.
Input inputFrom(const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw Failure("--set \"" + text + "\": write name=text; --json lists the names", kWrongCommandLine);
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

// The options that may come several times and whose order counts.
struct Repeated {
  CLI::Option* options;
  CLI::Option* copies;
  CLI::Option* set;
  CLI::Option* restoreDefaults;
};

CLI::Option* repeatable(CLI::Option* option) {
  return option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->allow_extra_args(false);
}

Repeated declare(CLI::App& app, CommandLine& line) {
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  app.set_help_flag("--help", "Show this help and exit");
  app.set_version_flag("--version", "tandem-trim " TANDEM_TRIM_VERSION, "Show the version and exit");
  app.add_option("-h", line.server, "The print server, as host or host:port")->type_name("SERVER");
  app.add_option("-d", line.printer, "The printer, instead of the default one")->type_name("PRINTER");
  auto* copies = app.add_option("-n", "How many copies to print")->check(copiesMistake)->type_name("COPIES");
  app.add_option("-t", line.title, "The job's title, instead of the file's name")->type_name("TITLE");
  auto* options =
      app.add_option("-o", "Job options as in lp; may be repeated")->type_name("\"KEYWORD=VALUE ...\"");
  auto* set =
      app.add_option("--set", "Type, choose or switch at the panel; may be repeated")->type_name("NAME=TEXT");
  auto* restore = app.add_flag("--restore-defaults")
                      ->description("Press the panel's button that brings the defaults back");
  app.add_flag("--summary", line.summary, "Show the panel's summary");
  app.add_flag("--json", line.json, "Show settings, limits and summary as JSON");
  app.add_flag("--force", line.force, "Send stored values that are outside the printer's limits");
  app.add_flag("--save-as-default", line.saveAsDefault, "Keep the settings as your defaults for the printer");
  app.add_flag("--reset-defaults", line.resetDefaults, "Take your defaults for the printer away");
  app.add_option("--ppd", line.ppd, "Take the PPD from a file instead of the printer's queue")
      ->type_name("FILE");
  app.add_option("--plugin", line.plugin, "The plug-in's bundle, or a folder that holds it")
      ->type_name("DIR");
  app.add_flag("--without-panel", line.withoutPanel, "Go on without the panel when it cannot be opened");
  app.add_flag("--wait", line.wait, "Wait until the job has ended");
  app.add_flag("--verbose", line.verbose, "Show the log on standard error, too");
  auto* dialog = app.add_flag_callback(
      "--dialog", [&line] { line.dialog = true; }, "Show the print dialog");
  app.add_flag_callback(
         "--no-dialog", [&line] { line.dialog = false; }, "Print without the print dialog")
      ->excludes(dialog);
  app.add_option("FILE", line.files, "The files to print; - is standard input")
      ->type_name("")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  return {repeatable(options), repeatable(copies), repeatable(set), restore};
}

// Walks the arguments in the order that they were given in.
void takeInOrder(const CLI::App& app, const Repeated& repeated, CommandLine& line) {
  std::size_t options = 0;
  std::size_t copies = 0;
  std::size_t set = 0;
  for (const CLI::Option* option : app.parse_order()) {
    if (option == repeated.options) {
      for (auto& parsed : parseOptions(option->results().at(options++)))
        setOption(line.options, std::move(parsed));
    } else if (option == repeated.copies) {
      setOption(line.options, {"copies", std::to_string(std::stoi(option->results().at(copies++)))});
    } else if (option == repeated.set) {
      line.inputs.push_back(inputFrom(option->results().at(set++)));
    } else if (option == repeated.restoreDefaults) {
      line.inputs.push_back({kRestoreDefault, std::nullopt});
    }
  }
}

// Whether a command line that takes defaults away asks for anything else.
bool asksForMore(const CommandLine& line) {
  CommandLine reset;
  reset.server = line.server;
  reset.printer = line.printer;
  reset.verbose = line.verbose;
  reset.resetDefaults = true;
  return line != reset;
}

}  // namespace

std::vector<std::string> optionNames() {
  CommandLine line;
  CLI::App app;
  declare(app, line);
  std::vector<std::string> names;
  for (const auto* option : app.get_options()) {
    for (const auto& name : option->get_snames()) names.push_back('-' + name);
    for (const auto& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::variant<CommandLine, Information> parseCommandLine(std::vector<std::string> arguments) {
  CommandLine line;
  CLI::App app("Print with the panel of the printer's plug-in, from a terminal.", "tandem-trim");
  const auto repeated = declare(app, line);
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return Information{app.help()};
  } catch (const CLI::CallForVersion& version) {
    return Information{std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    throw Failure(std::string(error.what()) + "; tandem-trim --help lists the options", kWrongCommandLine);
  }
  takeInOrder(app, repeated, line);
  if (line.resetDefaults && asksForMore(line)) {
    throw Failure("--reset-defaults only takes the defaults away; leave all but -h, -d and --verbose out",
                  kWrongCommandLine);
  }
  if (line.wait && line.files.empty()) throw Failure("--wait needs a file to print", kWrongCommandLine);
  return line;
}

}  // namespace tandemtrim::host
