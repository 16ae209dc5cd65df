#include "host/cli/command_line_parser.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <regex>

#include <CLI/CLI.hpp>
#include <cups/cups.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kMostCopies = 9999;
constexpr int kHighestPriority = 100;

// The number of a text that is nothing else, if it is one from 1 to `largest`.
std::optional<std::string> countUpTo(int largest, const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber && number >= 1 && number <= largest ? std::optional(std::to_string(number)) : std::nullopt;
}

using MaybeOptions = std::optional<Options>;

MaybeOptions copiesFrom(const std::string& text) {
  const auto count = countUpTo(kMostCopies, text);
  return count ? MaybeOptions({{"copies", *count}}) : std::nullopt;
}

MaybeOptions priorityFrom(const std::string& text) {
  const auto priority = countUpTo(kHighestPriority, text);
  return priority ? MaybeOptions({{"job-priority", *priority}}) : std::nullopt;
}

// "3", "3-", "-5" or "3-5".
bool isPageRange(std::string_view text) {
  const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
  const auto dashes = std::ranges::count(text, '-');
  return dashes <= 1 && std::ranges::any_of(text, isDigit) &&
         std::ranges::all_of(text, [&](char character) { return character == '-' || isDigit(character); });
}

MaybeOptions pagesFrom(std::string text) {
  std::erase(text, ' ');
  for (std::string_view rest = text;;) {
    const auto end = rest.find(',');
    if (!isPageRange(rest.substr(0, end))) return std::nullopt;
    if (end == std::string_view::npos) return MaybeOptions({{"page-ranges", text}});
    rest.remove_prefix(end + 1);
  }
}

MaybeOptions holdFrom(const std::string& text) {
  if (text == "hold") return {{{"job-hold-until", "indefinite"}}};
  if (text == "immediate") return {{{"job-hold-until", "no-hold"}, {"job-priority", "100"}}};
  if (text == "resume" || text == "restart") {
    throw Failure("-H " + text +
                      " is for a job that was sent before; nothing was sent. Do that by lp -i JOB -H " + text,
                  kWrongCommandLine);
  }
  static const std::regex time(
      "([01]?\\d|2[0-3]):[0-5]\\d(:[0-5]\\d)?|"
      "no-hold|indefinite|day-time|evening|night|second-shift|third-shift|weekend");
  return std::regex_match(text, time) ? MaybeOptions({{"job-hold-until", text}}) : std::nullopt;
}

// Those of lp's options that stand for options of the job, in the order of its manual page.
struct JobOption {
  const char* name;
  const char* type;
  const char* help;
  // What a text has to be; null where `read` says itself what is wrong.
  const char* form;
  // None for a text that is something else.
  MaybeOptions (*read)(const std::string& text);
};

constexpr std::array<JobOption, 5> kJobOptions{{
    {"-n", "COPIES", "How many copies to print", "number from 1 to 9999", copiesFrom},
    {"-o", "\"KEYWORD=VALUE ...\"", "Job options as in lp; may be repeated", nullptr,
     [](const std::string& text) { return MaybeOptions(parseOptions(text)); }},
    {"-q", "PRIORITY", "The job's priority, from 1 (lowest) to 100", "number from 1 to 100", priorityFrom},
    {"-H", "WHEN", "When to print: HH:MM (UTC), hold or immediate",
     "time in hours and minutes (UTC), hold or immediate", holdFrom},
    {"-P", "PAGES", "Which pages to print, as 1,3-5,16", "list of pages, as 1,3-5,16",
     [](const std::string& text) { return pagesFrom(text); }},
}};

void setJobOption(CommandLine& line, const JobOption& option, const std::string& text) {
  auto options = option.read(text);
  if (!options) {
    throw Failure(std::string(option.name) + ": \"" + text + "\" is no " + option.form +
                      "; tandem-trim --help lists the options",
                  kWrongCommandLine);
  }
  for (auto& each : *options) setOption(line.options, std::move(each));
}

// As lp asks the server for a letter to whoever prints. cupsUser() keeps its answer, so that it is not asked
// where the command line names the user.
Option letterTo(const std::string& user) {
  std::array<char, HTTP_MAX_HOST> host{};
  httpGetHostname(nullptr, host.data(), static_cast<int>(host.size()));
  return {"notify-recipient-uri", "mailto:" + user + "@" + host.data()};
}

// "name=text" as an act at the panel.
Input inputFrom(const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw Failure("--set \"" + text + "\": write name=text; --json lists the names", kWrongCommandLine);
  }
  return {text.substr(0, equals), text.substr(equals + 1)};
}

// An option that may come several times, or whose place among the others counts. What it does is done when
// all are read.
struct Ordered {
  const CLI::Option* option;
  std::function<void(const std::string& text)> act;
  std::size_t done = 0;
};

// Reads files as they stand. CLI11 would take one named [a,b] for a list of two, and has no way to say no.
class Parser : public CLI::App {
 public:
  using App::App;

  // What is no option. Failure for an option that is unknown.
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> files;
    for (const auto& [kind, argument] : missing_) {
      if (kind == CLI::detail::Classifier::POSITIONAL_MARK) continue;
      if (kind != CLI::detail::Classifier::NONE) throw CLI::ExtrasError({argument});
      files.push_back(argument);
    }
    return files;
  }
};

std::vector<Ordered> declareOrdered(CLI::App& app, CommandLine& line) {
  std::vector<Ordered> ordered;
  const auto add = [&](const char* name, const char* type, const char* help, auto act) {
    auto* const option = app.add_option(name)->description(help)->type_name(type)->expected(1);
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->allow_extra_args(false);
    ordered.push_back({option, act});
  };
  for (const auto& option : kJobOptions) {
    add(option.name, option.type, option.help,
        [&](const std::string& text) { setJobOption(line, option, text); });
  }
  ordered.push_back(
      {app.add_flag("-m")->description("Send a letter when the job has ended"),
       [&](const std::string&) { setOption(line.options, letterTo(line.user ? *line.user : cupsUser())); }});
  add("-i", "JOB", "Change a job: done by lp alone", [](const std::string& job) {
    throw Failure(
        "-i " + job +
            ": tandem-trim changes no job that was sent before; nothing was sent. Do that by lp -i " + job +
            " and the same options",
        kWrongCommandLine);
  });
  add("--set", "NAME=TEXT", "Type, choose or switch at the panel; may be repeated",
      [&](const std::string& text) { line.inputs.push_back(inputFrom(text)); });
  ordered.push_back({app.add_flag("--restore-defaults")
                         ->description("Press the panel's button that brings the defaults back"),
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
  app.add_flag("-E", line.encrypted, "Send nothing to the server unencrypted");
  app.add_option("-U", line.user, "Whom the server is to take for the job's owner")->type_name("USER");
  app.add_option("-d", line.printer, "The printer, instead of the default one")->type_name("PRINTER");
  app.add_option("-t", line.title, "The job's title, instead of the file's name")->type_name("TITLE");
  app.add_flag("-c")->description("Taken for lp's sake: documents always go to the server as copies");
  app.add_flag("-s", line.silent, "Say nothing on standard output of a job that is sent");
  auto ordered = declareOrdered(app, line);
  app.add_flag("--lenient", line.lenient, "Let the panel make a number of any text that --set types");
  app.add_flag("--list", line.list, "List the printers, which of them have a panel, and the default one");
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
  app.allow_extras();
  return ordered;
}

// Does what the arguments say in the order that they were given in.
void actInOrder(const CLI::App& app, std::vector<Ordered> ordered) {
  for (const CLI::Option* option : app.parse_order()) {
    const auto known = std::ranges::find(ordered, option, &Ordered::option);
    if (known != ordered.end()) known->act(option->results().at(known->done++));
  }
}

// The command line with nothing but the server and who asks it.
CommandLine placeOf(const CommandLine& line) {
  CommandLine place;
  place.server = line.server;
  place.user = line.user;
  place.encrypted = line.encrypted;
  place.verbose = line.verbose;
  return place;
}

// What goes with no job does not go with options that are about one.
void refuseMore(const CommandLine& line) {
  auto reset = placeOf(line);
  reset.resetDefaults = true;
  reset.printer = line.printer;
  if (line.resetDefaults && line != reset) {
    throw Failure(
        "--reset-defaults only takes the defaults away; leave all but -h, -E, -U, -d and --verbose out",
        kWrongCommandLine);
  }
  auto list = placeOf(line);
  list.list = true;
  list.plugin = line.plugin;
  if (line.list && line != list) {
    throw Failure("--list only lists the printers; leave all but -h, -E, -U, --plugin and --verbose out",
                  kWrongCommandLine);
  }
}

// Whether it is about something else than a job.
bool asksForNoJob(const CommandLine& line) {
  return line.summary || line.json || line.saveAsDefault || line.resetDefaults || line.list;
}

std::string helpOf(CLI::App& app) {
  std::vector<std::string> files;
  app.add_option("FILE", files,
                 "The files to print; - is standard input, and so is none where it is no terminal")
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
  refuseMore(line);
  if (line.files.empty() && hasInput && !asksForNoJob(line)) line.files = {"-"};
  if (line.wait && line.files.empty()) throw Failure("--wait needs a file to print", kWrongCommandLine);
  return line;
}

}  // namespace tandemtrim::host
