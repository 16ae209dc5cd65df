#include "host/cli/arguments/command_line_parser.hpp"

#include <algorithm>
#include <functional>

#include <CLI/CLI.hpp>

#include "host/cli/arguments/uses.hpp"
#include "host/cli/arguments/value_readers.hpp"
#include "host/failure.hpp"
#include "host/plain_text.hpp"
#include "host/presets/preset_folders.hpp"

namespace tandemtrim::host {
namespace {

// Marks the end of the unfinished word; no option's name contains it.
constexpr std::string_view kEnd = "\x7F";

// An option that may be repeated, or whose position counts. Once all arguments are read, `act` runs for each
// of its texts.
struct Ordered {
  const CLI::Option* option;
  std::function<void(const std::string& text)> act;
  std::size_t done = 0;
};

// Leaves the names of files unchanged. CLI11 would always take one named [a,b] for a list of two.
class Parser : public CLI::App {
 public:
  using App::App;

  // The arguments that are not options. Throws CLI::ExtrasError for an unknown option.
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> files;
    for (const auto& [kind, argument] : missing_) {
      if (kind == CLI::detail::Classifier::POSITIONAL_MARK) continue;
      if (kind != CLI::detail::Classifier::NONE) throw CLI::ExtrasError({argument});
      files.push_back(argument);
    }
    return files;
  }

  // Whether the unfinished word has the form of an option, but is neither a known option nor an option's
  // value.
  [[nodiscard]] bool endsInOption() const {
    if (missing_.empty()) return false;
    const auto& [kind, argument] = missing_.back();
    if (!argument.ends_with(kEnd)) return false;
    return kind == CLI::detail::Classifier::SHORT || kind == CLI::detail::Classifier::LONG;
  }
};

std::vector<Ordered> declareOrdered(CLI::App& app, CommandLine& line) {
  std::vector<Ordered> ordered;
  const auto add = [&](const char* name, const char* type, const char* help, auto act) {
    ordered.push_back({app.add_option(name)->description(help)->type_name(type)->expected(1), act});
  };
  for (const auto& option : kJobOptions) {
    add(option.name, option.type, option.help, [&](const std::string& text) {
      for (auto& each : optionsFrom(option, text)) setOption(line.options, std::move(each));
    });
  }
  ordered.push_back({app.add_flag("-m")->description("Send an e-mail when the job has ended"),
                     [&](const std::string&) { setOption(line.options, mailOption(line.user)); }});
  add("-i", "JOB", "Refused: only lp changes jobs", [](const std::string& job) {
    throw Failure(
        "-i " + shortText(job) +
            ": tandem-trim does not change a job that was sent before; nothing was sent. Use lp -i " +
            shortText(job) + " with the same options",
        kWrongCommandLine);
  });
  add("--applications", "on|off|status",
      "Make applications print with this dialog, through the desktop portal",
      [&](const std::string& text) { line.applications = applicationsFrom(text); });
  add("--set", "NAME=TEXT", "Type, choose or switch at the panel; may be repeated",
      [&](const std::string& text) { line.inputs.push_back(inputFrom(text)); });
  ordered.push_back(
      {app.add_flag("--restore-defaults")->description("Press the panel's button that restores the defaults"),
       [&](const std::string&) {
         line.inputs.push_back({kRestoreDefault, std::nullopt});
       }});
  return ordered;
}

std::vector<Ordered> declare(CLI::App& app, CommandLine& line) {
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)->disable_flag_override();
  app.set_help_flag("--help", "Show this help and exit");
  app.set_version_flag("--version", "tandem-trim " TANDEM_TRIM_VERSION, "Show the version and exit");
  app.add_option("-h", line.server, "The print server, as host or host:port")->type_name("SERVER");
  app.add_flag("-E", line.encrypted, "Require an encrypted connection");
  app.add_option("-U", line.user, "The user name that the server sees as the job's owner")->type_name("USER");
  app.add_option("-d", line.printer, "The printer, instead of the default one")->type_name("PRINTER");
  app.add_option("-t", line.title, "The job's title, instead of the file's name")->type_name("TITLE");
  app.add_flag("-c")->description(
      "Accepted as in lp, without effect: documents always go to the server as copies");
  app.add_flag("-s", line.silent, "Write nothing about the job to standard output");
  auto ordered = declareOrdered(app, line);
  app.add_flag("--lenient", line.lenient, "Let --set type any text, of which the panel keeps the digits");
  app.add_flag("--list", line.list, "List the printers, which of them have a panel, and the default one");
  app.add_flag("--summary", line.summary, "Show the panel's summary");
  app.add_flag("--json", line.json, "Show settings, limits and summary as JSON");
  app.add_flag("--force", line.force, "Send stored values that are outside the printer's limits");
  app.add_option("--preset", line.preset, "Start from the settings of this preset")->type_name("NAME");
  app.add_option("--save-preset", line.savePreset, "Save the settings as a preset")->type_name("NAME");
  app.add_option("--delete-preset", line.deletePreset, "Delete this preset")->type_name("NAME");
  app.add_flag("--list-presets", line.listPresets, "List the presets");
  app.add_flag("--save-as-default", line.saveAsDefault, "Save the settings as your defaults for the printer");
  app.add_flag("--reset-defaults", line.resetDefaults, "Remove your defaults for the printer");
  app.add_option("--ppd", line.ppd, "Take the PPD from a file instead of the printer's queue")
      ->type_name("FILE");
  app.add_option("--plugin", line.plugin, "The plug-in's bundle, or a folder that contains it")
      ->type_name("DIR");
  app.add_flag("--all-gtk", line.allGtk, "With --applications on: send all GTK programs through the portal");
  app.add_flag("--without-panel", line.withoutPanel, "Print without the panel if it cannot be opened");
  app.add_flag("--wait", line.wait, "Wait until the job has ended");
  app.add_flag("--verbose", line.verbose, "Show the log on standard error, too");
  auto* dialog = app.add_flag_callback(
      "--dialog", [&line] { line.dialog = true; },
      "Show the print dialog; the default for files if there is a screen");
  app.add_flag_callback(
         "--no-dialog", [&line] { line.dialog = false; }, "Print without the print dialog")
      ->excludes(dialog);
  app.add_flag("--no-notification", line.withoutNotification,
               "Show no desktop notification about the job after the print dialog");
  app.allow_extras();
  return ordered;
}

// Runs the options' `act` in the order of the arguments.
void actInOrder(const CLI::App& app, std::vector<Ordered> ordered) {
  for (const CLI::Option* option : app.parse_order()) {
    const auto known = std::ranges::find(ordered, option, &Ordered::option);
    if (known != ordered.end()) known->act(option->results().at(known->done++));
  }
}

void refuseBeside(const CommandLine& line, Use use, const std::string& fact) {
  if (const auto options = optionsBeside(line, use); !options.empty())
    throw Failure(fact + "; leave " + options + " out", kWrongCommandLine);
}

void refuseMismatches(const CommandLine& line) {
  if (line.server) refuseWrongServer(*line.server);
  if (line.printer) refuseWrongPrinter(*line.printer);
  if (line.resetDefaults) refuseBeside(line, Use::reset, "--reset-defaults only removes the saved defaults");
  if (line.deletePreset && line.listPresets)
    throw Failure("--delete-preset and --list-presets cannot be combined", kWrongCommandLine);
  if (line.deletePreset && line.json)
    throw Failure("--delete-preset only deletes a preset; leave --json out", kWrongCommandLine);
  if (line.deletePreset) refuseBeside(line, Use::presets, "--delete-preset only deletes a preset");
  if (line.listPresets) refuseBeside(line, Use::presets, "--list-presets only lists the presets");
  for (const auto& name : {line.preset, line.savePreset, line.deletePreset}) {
    if (name) refuseWrongPresetName(*name);
  }
  if (line.list) refuseBeside(line, Use::list, "--list only lists the printers");
  if (line.allGtk && line.applications != Applications::on)
    throw Failure("--all-gtk needs --applications on", kWrongCommandLine);
  if (line.applications)
    refuseBeside(line, Use::applications, "--applications only chooses the print dialog of applications");
  if (line.dialog == true) refuseBeside(line, Use::dialog, "--dialog leaves the panel to the user");
  if (!line.files.empty()) return;
  if (line.wait) throw Failure("--wait needs a job; name a file to print", kWrongCommandLine);
  if (line.dialog == true) throw Failure("--dialog needs a job; name a file to print", kWrongCommandLine);
}

std::string helpOf(CLI::App& app) {
  std::vector<std::string> files;
  app.add_option(
         "FILE", files,
         "The files to print; - is standard input, which is also printed if no file is named and it is "
         "not a terminal")
      ->type_name("");
  return app.help();
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

std::variant<CommandLine, Information> parseCommandLine(std::vector<std::string> arguments, bool hasInput) {
  CommandLine line;
  Parser app("Print with the panel of the printer's plug-in, from a terminal.", "tandem-trim");
  const auto ordered = declare(app, line);
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(std::move(arguments));
    line.files = app.files();
  } catch (const CLI::CallForHelp&) {
    return Information{helpOf(app)};
  } catch (const CLI::CallForVersion& version) {
    return Information{std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    throw Failure(std::string(error.what()) + "; tandem-trim --help lists the options", kWrongCommandLine);
  }
  actInOrder(app, ordered);
  if (line.files.empty() && hasInput && optionsBeside(line, Use::input).empty()) line.files = {"-"};
  refuseMismatches(line);
  return line;
}

Unfinished parseUnfinished(std::vector<std::string> words) {
  if (words.empty()) return {};
  Unfinished unfinished;
  unfinished.lastWord = words.back();
  Parser app;
  declare(app, unfinished.line);
  // Marks the last word, which is a value even when it is empty.
  words.back() += kEnd;
  std::reverse(words.begin(), words.end());
  try {
    app.parse(std::move(words));
  } catch (const CLI::ParseError&) {
    // The words before the error are used.
  }
  const auto& typed = unfinished.lastWord;
  unfinished.isName = app.endsInOption();
  const auto* const option = app.parse_order().empty() ? nullptr : app.parse_order().back();
  if (option != nullptr && option->results().back().ends_with(kEnd)) {
    unfinished.option = option->get_name();
    unfinished.valueAt = typed.size() - (option->results().back().size() - kEnd.size());
    // The word may also be the beginning of a longer name.
    unfinished.isName = unfinished.valueAt == typed.size() && typed == unfinished.option;
  }
  return unfinished;
}

}  // namespace tandemtrim::host
