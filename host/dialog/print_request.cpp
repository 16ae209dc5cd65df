#include "host/dialog/print_request.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "host/cups/connection/connection.hpp"
#include "host/cups/printer.hpp"
#include "host/cups/saved_defaults.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// The values that a queue uses unless the job or the administrator sets others.
constexpr std::array<std::pair<const char*, const char*>, 6> kQueueDefaults{{{"copies", "1"},
                                                                             {"number-up", "1"},
                                                                             {"number-up-layout", "lrtb"},
                                                                             {"orientation-requested", "3"},
                                                                             {"OutputOrder", "Normal"},
                                                                             {"page-set", "all"}}};

// Whether the server uses this value for a job without the option.
bool isQueueDefault(const Option& option, const Printer& printer) {
  return std::ranges::any_of(kQueueDefaults, [&](const auto& standard) {
    if (!isSameKeyword(option.keyword, standard.first) || option.value != standard.second) return false;
    return std::ranges::none_of(printer.serverDefaults, [&](const Option& serverDefault) {
      return isSameKeyword(serverDefault.keyword, standard.first) && serverDefault.value != standard.second;
    });
  });
}

std::optional<Failure> useForAllJobs(const Options& options, const Connection& connection,
                                     const Printer& printer, const Report& report) {
  try {
    saveAsDefault(connection, printer, keepable(options));
    return std::nullopt;
  } catch (const Failure& failure) {
    report("the job was sent, but its settings were not saved for all jobs: " + failure.fact().english());
    return Failure(Trouble::notKeptForAllJobs, failure.fact());
  }
}

// Whether the server has the whole job in spite of this failure.
bool isSent(const Failure& failure) {
  return failure.trouble() == Trouble::unconfirmedSettings || failure.trouble() == Trouble::lostSettings;
}

}  // namespace

SendResult sendRequest(const PrintRequest& request, std::vector<Document>& documents,
                       const Progress& progress, const Report& report) {
  const Connection connection(request.server);
  const auto printer = findPrinter(connection, request.printer);
  checkState(printer, [](const std::string&) {});
  if (printer.stopped) throw Failure(Trouble::stopped, stoppedFact(printer), "; nothing was sent");
  auto options = request.options;
  std::erase_if(options, [&](const Option& option) { return isQueueDefault(option, printer); });
  const auto title = request.title.value_or(documents.front().name());
  progress(std::nullopt, title, 0, documents.front().size());
  SendResult result{sendAndConfirm(connection, printer, title, options, documents, progress), {}};
  auto& [job, problems] = result;
  if (connection.warning()) report(*connection.warning());
  if (job.failure && !isSent(*job.failure)) throw Failure(*job.failure);
  if (request.useForAllJobs && !job.failure) {
    if (const auto notKept =
            useForAllJobs(withoutKeywords(options, request.notKept), connection, printer, report))
      problems.push_back(*notKept);
  }
  if (job.failure) problems.push_back(*job.failure);
  return result;
}

}  // namespace tandemtrim::host
