// The input is a print server's answers to the requests that the program makes while it prints, with "|||"
// between them; each begins with the number of its status. With any answers the program continues or raises a
// Failure, and confirms no option that the server does not name.
#include <algorithm>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/support/print_server.hpp"
#include "fuzz/support/target.hpp"
#include "host/cups/queue_ppd.hpp"
#include "host/cups/sent_job.hpp"

namespace tandemtrim::fuzz {
namespace {

using namespace host;

constexpr std::string_view kBetweenAnswers = "|||";
std::deque<std::string> answersIn(std::string_view input) {
  std::deque<std::string> answers;
  for (std::size_t start = 0; start <= input.size();) {
    const auto end = std::min(input.find(kBetweenAnswers, start), input.size());
    answers.emplace_back(input.substr(start, end - start));
    start = end + kBetweenAnswers.size();
  }
  return answers;
}

std::string document() {
  static const int file = memfd_create("document", 0);
  static const bool isWritten = write(file, "%PDF-1.4\n", 9) == 9;
  require(isWritten, "the document is written");
  return "/proc/self/fd/" + std::to_string(file);
}

void print(const std::string& server) {
  const Connection connection(server);
  const auto printer = findPrinter(connection, "Morva");
  const auto ppd = queuePpd(connection, printer);
  std::vector<Document> documents;
  documents.emplace_back(document());
  auto job = sendAndConfirm(connection, printer, "Fuzzed", {{"MVTopMargin", "5"}, {"copies", "2"}}, documents,
                            [](auto&&...) {});
  require(!jobText(job).empty(), "every job has a text");
  if (!job.reported || job.failure) return;
  require(job.reported->lost.empty(), "a job that lacks an option is not confirmed");
  if (job.reported->state >= IPP_JSTATE_CANCELED) waitForEnd(connection, printer, job, [](const auto&) {});
}

}  // namespace

void examine(std::string_view input) {
  setenv("TANDEM_TRIM_TIMEOUT", "1", 1);
  setenv("HOME", "/nonexistent", 1);
  const auto server = serveAnswers(answersIn(input));
  try {
    print(server);
  } catch (const Failure& failure) {
    require(*failure.what() != '\0', "every failure has a text");
  }
}

}  // namespace tandemtrim::fuzz
