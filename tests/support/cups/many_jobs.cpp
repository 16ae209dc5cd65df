// Plans and sends many jobs with random settings. `plan SEED COUNT PRINTER...` lets the panel settle each job
// and writes it as a line of JSON: title (its number), printer, arguments of the terminal program, options to
// be sent. `send DOCUMENT` reads such lines and sends the jobs as the program does, over one connection;
// after a job that is not confirmed, the next one gets a new connection.

#include <array>
#include <map>
#include <memory>
#include <random>
#include <span>

#include "host/cups/queue_ppd.hpp"
#include "host/cups/sent_job.hpp"
#include "host/failure.hpp"
#include "host/panel/job_settings.hpp"
#include "tests/support/cups/planned_job.hpp"

namespace tandemtrim::host {
namespace {

using Json = nlohmann::ordered_json;
using Random = std::mt19937_64;

struct Setting {
  const char* name;
  const char* keyword;
  std::vector<std::string> choices;
  // A margin's limit. Larger values are entered, too, and the panel clamps them.
  int largest;
};

const std::array<Setting, 6> kSettings{{
    {"Direction", "MVImageDirectionPriority", {"LongEdgeFeed", "ShortEdgeFeed"}, 0},
    {"Position", "MVPrintPosition", {"Left", "Center", "Right"}, 0},
    {"Top", "MVTopMargin", {}, 20},
    {"Bottom", "MVBottomMargin", {}, 30},
    {"Left", "MVLeftMargin", {}, 15},
    {"Right", "MVRightMargin", {}, 25},
}};

std::size_t below(Random& random, std::size_t count) { return static_cast<std::size_t>(random() % count); }

std::string anyValue(Random& random, const Setting& setting, int beyond) {
  if (!setting.choices.empty()) return setting.choices[below(random, setting.choices.size())];
  return std::to_string(below(random, static_cast<std::size_t>(setting.largest + 1 + beyond)));
}

// A random command line: some settings as options, some as entries in the panel.
CommandLine anyCommandLine(Random& random) {
  CommandLine line;
  for (const auto& setting : kSettings) {
    if (below(random, 2) == 0) line.options.push_back({setting.keyword, anyValue(random, setting, 0)});
  }
  line.inputs.push_back({"Valid", "On"});
  for (const auto& setting : kSettings) {
    if (below(random, 2) == 0) line.inputs.push_back({setting.name, anyValue(random, setting, 40)});
  }
  if (below(random, 5) == 0) line.inputs.push_back({kRestoreDefault, std::nullopt});
  if (below(random, 3) == 0) line.inputs.push_back({"Valid", "Off"});
  return line;
}

// The arguments of the terminal program for this command line.
std::vector<std::string> wordsOf(const CommandLine& line) {
  std::vector<std::string> words;
  for (const auto& option : line.options) words.insert(words.end(), {"-o", optionText(option)});
  for (const auto& [name, text] : line.inputs) {
    if (text) {
      words.insert(words.end(), {"--set", name + '=' + *text});
    } else {
      words.emplace_back("--restore-defaults");
    }
  }
  return words;
}

void plan(std::uint64_t seed, std::uint64_t count, std::span<char* const> printers) {
  const Connection connection(std::nullopt);
  std::vector<PpdHandle> ppds;
  for (const char* name : printers) ppds.push_back(queuePpd(connection, findPrinter(connection, name)));
  for (std::uint64_t number = 0; number < count; ++number) {
    Random random(seed + number);
    const auto queue = number % printers.size();
    const auto line = anyCommandLine(random);
    const auto settled =
        settleSettings(line, printers[queue], ppds[queue].get(), {}, line.options, [](const auto&) {});
    Json json{{"title", std::to_string(number)}, {"printer", printers[queue]}, {"arguments", wordsOf(line)}};
    for (const auto& [keyword, value] : settled.options) json["options"][keyword] = value;
    std::cout << json << '\n';
  }
}

int sendOne(const Connection& connection, const Printer& printer, const PlannedJob& planned,
            const std::string& file) {
  auto documents = openDocuments({file});
  const auto job = sendAndConfirm(connection, printer, planned.title, planned.options, documents,
                                  [](auto, const auto&, auto, auto) {});
  if (job.failure || !job.reported) throw Failure(jobText(job));
  return job.number;
}

void sendAll(const std::string& file) {
  auto connection = std::make_unique<Connection>(std::nullopt);
  std::map<std::string, Printer> printers;
  for (PlannedJob planned; readJob(planned);) {
    if (!printers.contains(planned.printer))
      printers.emplace(planned.printer, findPrinter(*connection, planned.printer));
    try {
      writeAnswer(planned, sendOne(*connection, printers.at(planned.printer), planned, file));
    } catch (const Failure& failure) {
      std::cerr << planned.title << ": " << failure.what() << std::endl;
      writeAnswer(planned, std::nullopt);
      connection = std::make_unique<Connection>(std::nullopt);
    }
  }
}

}  // namespace
}  // namespace tandemtrim::host

int main(int argc, char** argv) try {
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  const std::string act = argc > 1 ? arguments[1] : "";
  if (act == "plan" && argc > 4) {
    tandemtrim::host::plan(std::stoull(arguments[2]), std::stoull(arguments[3]), arguments.subspan(4));
  } else if (act == "send" && argc == 3) {
    tandemtrim::host::sendAll(arguments[2]);
  } else {
    throw std::invalid_argument("usage: many_jobs plan SEED COUNT PRINTER... | send DOCUMENT");
  }
} catch (const std::exception& failure) {
  std::cerr << failure.what() << '\n';
  return 1;
}
