#include "host/cups/job.hpp"

#include <array>
#include <string_view>
#include <utility>

#include "host/cups/connection/attributes.hpp"
#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

// A failure with this text, which quotes the reason, and with the reason's trouble and remedy.
Failure because(const Failure& reason, FactText text, std::vector<FactArgument> arguments) {
  arguments.emplace_back("[reason]", reason.fact());
  return Failure(reason.trouble(), Fact(text, std::move(arguments)), reason.remedy());
}

// The same with the server's last answer as the reason.
Failure refused(const Connection& connection, FactText text, std::vector<FactArgument> arguments) {
  return because(connection.lastFailure(), text, std::move(arguments));
}

// The mark of a job. It is a URI, since CUPS passes no URI to filters.
constexpr const char* kMark = "tandem-trim-request";

std::string newMark() {
  std::array<char, 64> uuid{};
  return httpAssembleUUID(cupsServer(), ippPort(), nullptr, 0, uuid.data(), uuid.size());
}

void cancelJob(const Connection& connection, const Printer& printer, int number) {
  auto request = printerRequest(IPP_OP_CANCEL_JOB, printer.name);
  ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", number);
  const auto answer = connection.ask(std::move(request), "/jobs/");
  if (isError(answer)) throw connection.lastFailure();
}

std::vector<int> askForMarked(const Connection& connection, const Printer& printer, const std::string& mark) {
  auto request = printerRequest(IPP_OP_GET_JOBS, printer.name);
  ippAddBoolean(request.get(), IPP_TAG_OPERATION, "my-jobs", 1);
  requestAttributes(request, {"job-id", kMark});
  const auto answer = connection.ask(std::move(request), printerResource(printer.name));
  if (isError(answer)) throw connection.lastFailure();
  return numbersOfMarked(answer, mark);
}

// Cancels any job that the server has made for a request whose answer is lost. A server may close the
// connection after each answer.
void cancelMarked(const Connection& connection, const Printer& printer, const std::string& mark) {
  std::vector<int> numbers;
  connection.persist([&] { numbers = askForMarked(connection, printer, mark); });
  for (const int number : numbers) connection.persist([&] { cancelJob(connection, printer, number); });
}

// The failure of an unanswered request for a job, after cancelling any job that the server has made for it.
Failure unanswered(const Connection& connection, const Printer& printer, const std::string& mark,
                   const Failure& reason) {
  auto failure =
      because(reason, "[printer] did not answer the request for a job; nothing was printed: [reason]"_fact,
              {{"[printer]", printer.name}});
  try {
    cancelMarked(connection, printer, mark);
    return failure;
  } catch (const Failure&) {
    return Failure(Trouble::unconfirmedJob,
                   Fact("[reason]; an empty job may be left there"_fact, {{"[reason]", failure.fact()}}),
                   " (see lpstat -o " + printer.name + ")");
  }
}

// Makes a job without a document and returns its number. Not by libcups's function, which first requests a
// list of all that the printer supports: that takes longer than the job.
int createJob(const Connection& connection, const Printer& printer, const std::string& title,
              const Options& options) {
  constexpr auto kRefused = "[printer] refuses the job; nothing was printed: [reason]"_fact;
  const std::vector<FactArgument> name{{"[printer]", printer.name}};
  const auto mark = newMark();
  auto request = printerRequest(IPP_OP_CREATE_JOB, printer.name);
  ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, title.c_str());
  const std::span groups(kJobGroups);
  encodeOptions(request, options, groups.first(2));
  ippAddString(request.get(), IPP_TAG_JOB, IPP_TAG_URI, kMark, nullptr, mark.c_str());
  encodeOptions(request, options, groups.last(1));
  MessageHandle answer;
  try {
    answer = connection.ask(std::move(request), printerResource(printer.name));
  } catch (const Failure& failure) {
    throw connection.isTurnedDown() ? because(failure, kRefused, name)
                                    : unanswered(connection, printer, mark, failure);
  }
  if (isError(answer)) throw refused(connection, kRefused, name);
  const auto number = integerIn(answer, "job-id");
  if (number > 0) return *number;
  const Fact useless(connection.server() + " did not give it a number", kUselessAnswer,
                     {{"[server]", serverName()}});
  const Failure numberless(Trouble::noServer, useless, "; see whether it is a print server");
  // Without any number in the answer, there may be a job to cancel.
  throw number ? because(numberless, kRefused, name) : unanswered(connection, printer, mark, numberless);
}

std::optional<std::string> valueOf(const Options& options, const std::string& keyword) {
  for (const auto& option : options) {
    if (option.keyword == keyword) return option.value;
  }
  return std::nullopt;
}

}  // namespace

std::string documentFormat(const Options& options) {
  if (valueOf(options, "raw")) return CUPS_FORMAT_RAW;
  return valueOf(options, "document-format").value_or(CUPS_FORMAT_AUTO);
}

std::vector<int> numbersOfMarked(const MessageHandle& list, const std::string& mark) {
  std::vector<int> numbers;
  int number = 0;
  bool isMarked = false;
  const auto endJob = [&] {
    if (isMarked && number > 0) numbers.push_back(number);
    number = 0;
    isMarked = false;
  };
  // Attributes without a name separate the jobs.
  for (auto* next = ippFirstAttribute(list.get()); next != nullptr; next = ippNextAttribute(list.get())) {
    const char* const name = ippGetName(next);
    if (name == nullptr) {
      endJob();
    } else if (std::string_view(name) == "job-id") {
      number = ippGetInteger(next, 0);
    } else if (std::string_view(name) == kMark) {
      isMarked = attributeText(next) == mark;
    }
  }
  endJob();
  return numbers;
}

UnfinishedJob::UnfinishedJob(const Connection& connection, const Printer& printer, const std::string& title,
                             const Options& options)
    : connection_(connection), printer_(printer), number_(createJob(connection, printer, title, options)) {}

SentDocument UnfinishedJob::send(Document& document, const std::string& format, bool last,
                                 const Progress& progress) const {
  auto* const http = connection_.get();
  const auto& name = document.name();
  http_status_t status = HTTP_STATUS_ERROR;
  // A server may begin to answer in the middle of the document and never stop.
  const auto write = [&](const auto& part) {
    const auto watched = connection_.watch(Patience::whileBytesLeave);
    status = part();
  };
  connection_.prepare();
  write([&] {
    return cupsStartDocument(http, printer_.name.c_str(), number_, name.c_str(), format.c_str(), last);
  });
  connection_.checkServer();
  std::uint64_t sent = 0;
  if (status == HTTP_STATUS_CONTINUE) {
    document.read([&](std::span<const char> piece) {
      if (!piece.empty()) write([&] { return cupsWriteRequestData(http, piece.data(), piece.size()); });
      sent += piece.size();
      progress(number_, name, sent, document.size());
      return status == HTTP_STATUS_CONTINUE;
    });
  }
  constexpr auto kNotTaken = "[printer] did not accept [document]: [reason]"_fact;
  const std::vector<FactArgument> names{{"[printer]", printer_.name}, {"[document]", name}};
  if (status != HTTP_STATUS_CONTINUE) throw refused(connection_, kNotTaken, names);
  if (document.size() > sent) {
    throw Failure(Trouble::document,
                  Fact("[document] shrank while it was sent: [sent] of [size] bytes were left"_fact,
                       {{"[document]", name},
                        {"[sent]", std::to_string(sent)},
                        {"[size]", std::to_string(*document.size())}}));
  }
  // Not cupsFinishDocument(): when the connection breaks, it returns the status of an earlier answer.
  const auto answer = connection_.answerToDocument(printerResource(printer_.name));
  if (!answer && !connection_.isTurnedDown())
    return {sent, refused(connection_, "[printer] did not confirm [document]: [reason]"_fact, names)};
  if (isError(answer)) throw refused(connection_, kNotTaken, names);
  return {sent, std::nullopt};
}

bool UnfinishedJob::cancel() {
  if (std::exchange(isKept_, true)) return false;
  try {
    connection_.persist([&] { cancelJob(connection_, printer_, number_); });
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace tandemtrim::host
