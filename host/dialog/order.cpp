#include "host/dialog/order.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "host/cups/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// What a queue does with a job that does not say otherwise.
constexpr std::array<std::pair<const char*, const char*>, 6> kUsual{{{"copies", "1"},
                                                                     {"number-up", "1"},
                                                                     {"number-up-layout", "lrtb"},
                                                                     {"orientation-requested", "3"},
                                                                     {"OutputOrder", "Normal"},
                                                                     {"page-set", "all"}}};

// Whether the queue would do so of itself: neither its administrator nor the person made another value the
// default.
bool isUsual(const Option& option, const Printer& printer) {
  return std::ranges::any_of(kUsual, [&](const auto& usual) {
    if (!isSameKeyword(option.keyword, usual.first) || option.value != usual.second) return false;
    const auto& queue = *printer.destination;
    const char* const preset = cupsGetOption(usual.first, queue.num_options, queue.options);
    return preset == nullptr || std::string_view(preset) == usual.second ||
           std::string_view(preset) == "no-value";
  });
}

// What a person means for the one job, whatever is kept for the others.
constexpr std::array<const char*, 5> kOfOneJob{"copies", "Collate", "page-ranges", "page-set",
                                               "job-hold-until"};

std::optional<Failure> useForAllJobs(Options options, const Connection& connection, const Printer& printer,
                                     const Note& note) {
  std::erase_if(options, [](const Option& option) {
    return std::ranges::any_of(kOfOneJob,
                               [&](const char* own) { return isSameKeyword(own, option.keyword); });
  });
  try {
    saveAsDefault(connection, printer, options);
    return std::nullopt;
  } catch (const Failure& failure) {
    note("the job was sent, but its settings are not kept for all jobs: " + std::string(failure.what()));
    return Failure(Trouble::notKeptForAllJobs, failure.fact());
  }
}

}  // namespace

Delivery carryOut(const Order& order, const Progress& progress, const Note& note) {
  const Connection connection(order.server);
  const auto printer = findPrinter(connection, order.printer);
  checkState(printer, [](const std::string&) {});
  if (printer.stopped) throw Failure(Trouble::stopped, stoppedText(printer), "; nothing was sent");
  auto& documents = *order.documents;
  progress(documents.front().name(), 0, documents.front().size());
  auto options = order.options;
  std::erase_if(options, [&](const Option& option) { return isUsual(option, printer); });
  Delivery delivery{sendAndConfirm(connection, printer, order.title, options, documents, progress), {}};
  auto& [job, shortcomings] = delivery;
  if (order.useForAllJobs) {
    if (const auto notKept = useForAllJobs(options, connection, printer, note))
      shortcomings.push_back(*notKept);
  }
  if (job.unconfirmed) shortcomings.emplace_back(Trouble::unconfirmedSettings, job.unconfirmed->fact());
  if (job.lost && !job.lost->empty()) shortcomings.emplace_back(Trouble::lostSettings, jobText(job));
  return delivery;
}

}  // namespace tandemtrim::host
