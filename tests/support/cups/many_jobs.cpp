// Sends many jobs with random settings over one connection, each settled by the panel and sent as the program
// does it. Prints a line for each job: "job <tab> printer <tab> keyword=value <tab> ...". With
// TANDEM_TRIM_BREAKS, a job that is not confirmed has "failed" for its number, and the next job gets a new
// connection; otherwise such a job ends the program.

#include <array>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>
#include <span>

#include "host/cups/queue_ppd.hpp"
#include "host/cups/sent_job.hpp"
#include "host/failure.hpp"
#include "host/panel/job_settings.hpp"

namespace tandemtrim::host {
namespace {

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
CommandLine anyWishes(Random& random, std::uint64_t number) {
  CommandLine line;
  line.options.push_back({"x-number", std::to_string(number)});
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

struct Queue {
  Printer printer;
  PpdHandle ppd;
};

int sendOne(const Connection& connection, const Queue& queue, const Options& options,
            const std::string& file) {
  auto documents = openDocuments({file});
  const auto job = sendAndConfirm(connection, queue.printer, documents.front().name(), options, documents,
                                  [](auto, const auto&, auto, auto) {});
  if (job.failure || !job.held) throw Failure(jobText(job));
  return job.number;
}

void sendAll(std::uint64_t count, std::uint64_t seed, const std::string& file,
             std::span<char* const> printers) {
  const bool breaks = std::getenv("TANDEM_TRIM_BREAKS") != nullptr;
  auto connection = std::make_unique<Connection>(std::nullopt);
  std::vector<Queue> queues;
  for (const char* name : printers) {
    auto printer = findPrinter(*connection, name);
    auto ppd = queuePpd(*connection, printer);
    queues.push_back({std::move(printer), std::move(ppd)});
  }
  for (std::uint64_t number = 0; number < count; ++number) {
    Random random(seed + number);
    const auto& queue = queues[number % queues.size()];
    const auto line = anyWishes(random, number);
    const auto settled =
        settleSettings(line, queue.printer.name, queue.ppd.get(), {}, line.options, [](const auto&) {});
    std::string job = "failed";
    try {
      job = std::to_string(sendOne(*connection, queue, settled.options, file));
    } catch (const Failure&) {
      if (!breaks) throw;
      connection = std::make_unique<Connection>(std::nullopt);
    }
    std::cout << job << '\t' << queue.printer.name;
    for (const auto& [keyword, value] : settled.options) std::cout << '\t' << keyword << '=' << value;
    std::cout << '\n';
  }
}

}  // namespace
}  // namespace tandemtrim::host

int main(int argc, char** argv) try {
  if (argc < 5) throw std::invalid_argument("usage: many_jobs COUNT SEED DOCUMENT PRINTER...");
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  tandemtrim::host::sendAll(std::stoull(arguments[1]), std::stoull(arguments[2]), arguments[3],
                            arguments.subspan(4));
} catch (const std::exception& failure) {
  std::cerr << failure.what() << '\n';
  return 1;
}
