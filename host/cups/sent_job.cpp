#include "host/cups/sent_job.hpp"

#include <chrono>
#include <thread>

#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::milliseconds kBetweenQuestions{250};
constexpr std::chrono::seconds kWaitForRest{2};

std::string nameOf(const SentJob& job) { return "job " + std::to_string(job.number) + " on " + job.printer; }

std::string withReasons(const std::string& text, const ReportedJob& reported) {
  return text + (reported.reasons.empty() ? "" : " (" + reported.reasons + ")");
}

Fact factOf(const SentJob& job, std::string english, FactText text, std::vector<FactArgument> others = {}) {
  others.emplace_back("[number]", std::to_string(job.number));
  others.emplace_back("[printer]", job.printer);
  return {std::move(english), text, std::move(others)};
}

// The lost options, in symbols that need no translation.
std::string lostText(const ReportedJob& reported) {
  std::string text;
  for (const auto& [keyword, sent, now] : reported.lost) {
    text.append(text.empty() ? "" : ", ").append(keyword).append(" (").append(shortText(sent));
    text.append(now ? " → " + shortText(*now) : "").append(")");
  }
  return text;
}

std::string lossOf(const LostOption& lost) {
  if (!lost.atServer) return lost.keyword;
  return lost.keyword + " (sent \"" + shortText(lost.sent) + "\", the server has \"" +
         shortText(*lost.atServer) + "\")";
}

std::string optionsText(const SentJob& job) {
  const auto& reported = *job.reported;
  std::string text = nameOf(job) + ": " + std::to_string(job.options - reported.lost.size()) + " of " +
                     std::to_string(job.options) + " options confirmed";
  for (const auto& option : reported.lost)
    text += (&option == &reported.lost.front() ? "; lost: " : ", ") + lossOf(option);
  return text;
}

// Whether to leave the job at the server: it has ended, or nothing of it is missing.
bool staysAtServer(const ReportedJob& reported) {
  return badEnd(reported) || reported.state == IPP_JSTATE_COMPLETED || reported.incomplete.empty();
}

// Sends the documents, up to one that the server does not confirm; returns the reason, or nullopt.
std::optional<Failure> sendAll(const UnfinishedJob& job, std::vector<Document>& documents,
                               const Progress& progress, JobContent& sent) {
  const auto format = documentFormat(sent.options);
  for (auto& document : documents) {
    const auto [bytes, unanswered] = job.send(document, format, &document == &documents.back(), progress);
    sent.bytes += bytes;
    if (unanswered) return unanswered;
  }
  return std::nullopt;
}

// Asks the server about the job. Failure when it has no usable answer.
ReportedJob askForReport(const Connection& connection, const Printer& printer, int number,
                         const JobContent& sent) {
  std::optional<ReportedJob> reported;
  connection.persist([&] { reported = askForJob(connection, printer, number, sent); });
  if (!reported)
    throw Failure(
        Trouble::noServer,
        Fact(connection.server() + " does not report the job", kUselessAnswer, {{"[server]", serverName()}}),
        "; see lpstat -W all -o " + printer.name);
  return *std::move(reported);
}

// The same, but waits a while for the rest of an unconfirmed document, which may still arrive.
ReportedJob askForWhole(const Connection& connection, const Printer& printer, int number,
                        const JobContent& sent) {
  const auto end = std::chrono::steady_clock::now() + kWaitForRest;
  for (;; std::this_thread::sleep_for(kBetweenQuestions)) {
    auto reported = askForReport(connection, printer, number, sent);
    if (sent.isAnswered || !reported.isArriving || std::chrono::steady_clock::now() >= end) return reported;
  }
}

// Cancels the job; returns its failure, which also says whether that succeeded.
Failure failureAfterCancelling(const Failure& failure, UnfinishedJob& unfinished, const SentJob& job) {
  if (unfinished.cancel()) {
    return Failure(
        failure.trouble(),
        factOf(job, failure.fact().english() + "; " + nameOf(job) + " was cancelled",
               "[reason]; job [number] on [printer] was cancelled"_fact, {{"[reason]", failure.fact()}}),
        failure.remedy(), failure.exitStatus());
  }
  return Failure(
      Trouble::unconfirmedJob,
      factOf(
          job,
          failure.fact().english() + "; " + nameOf(job) + " could not be cancelled and may still be printed",
          "[reason]; job [number] on [printer] could not be cancelled and may still be printed"_fact,
          {{"[reason]", failure.fact()}}),
      " (see lpstat -o " + job.printer + ")", failure.exitStatus());
}

// "job 17 on Morva: processing (job-printing): cutting; 3 sheets printed".
std::string progressOf(const SentJob& job) {
  const auto& reported = *job.reported;
  auto text = withReasons(nameOf(job) + ": " + ippEnumString("job-state", reported.state), reported);
  if (!reported.message.empty()) text += ": " + reported.message;
  if (reported.sheets > 0)
    text += "; " + std::to_string(reported.sheets) +
            (reported.sheets == 1 ? " sheet printed" : " sheets printed");
  return text;
}

}  // namespace

std::optional<std::string> badEnd(const ReportedJob& reported) {
  if (reported.state == IPP_JSTATE_CANCELED) return "cancelled";
  if (reported.state == IPP_JSTATE_ABORTED) return "aborted";
  // CUPS keeps a job whose filter failed, until somebody restarts it.
  const bool hasFailed = reported.state == IPP_JSTATE_STOPPED &&
                         reported.reasons.find("job-completed-with-errors") != std::string::npos;
  return hasFailed ? std::optional<std::string>("stopped") : std::nullopt;
}

std::optional<Failure> objection(const SentJob& job, const std::string& server) {
  const auto& reported = *job.reported;
  if (const auto end = badEnd(reported))
    return Failure(Trouble::other,
                   withWords(factOf(job, nameOf(job) + " was " + *end + " at " + server,
                                    reported.state == IPP_JSTATE_CANCELED
                                        ? "job [number] on [printer] was cancelled at the print server"_fact
                                        : "job [number] on [printer] failed at the print server"_fact),
                             reported.reasons));
  if (!reported.incomplete.empty()) {
    return Failure(
        Trouble::other,
        factOf(job, nameOf(job) + " is incomplete: " + server + " has " + reported.incomplete + " of it",
               "job [number] on [printer] is incomplete at the print server"_fact),
        "; print it again");
  }
  if (!reported.lost.empty())
    return Failure(
        Trouble::lostSettings,
        factOf(job, optionsText(job), "job [number] on [printer] has lost these settings: [options]"_fact,
               {{"[options]", lostText(reported)}}));
  return std::nullopt;
}

bool isAtServer(const SentJob& job) {
  return !job.failure || job.failure->trouble() == Trouble::lostSettings ||
         job.failure->trouble() == Trouble::unconfirmedSettings;
}

std::string jobText(const SentJob& job) {
  if (job.failure) return job.failure->what();
  const bool waits = job.reported->state == IPP_JSTATE_HELD || job.reported->state == IPP_JSTATE_STOPPED;
  return optionsText(job) + (waits ? withReasons("; it is held", *job.reported) : "");
}

SentJob sendAndConfirm(const Connection& connection, const Printer& printer, const std::string& title,
                       const Options& options, std::vector<Document>& documents, const Progress& progress) {
  JobContent sent{optionsOfTheJob(options), documents.size(), 0};
  UnfinishedJob unfinished(connection, printer, title, options);
  SentJob job{unfinished.number(), printer.name, sent.options.size()};
  job.title = title;
  std::optional<Failure> unanswered;
  try {
    unanswered = sendAll(unfinished, documents, progress, sent);
  } catch (const Failure& failure) {
    job.failure = failureAfterCancelling(failure, unfinished, job);
    return job;
  }
  sent.isAnswered = !unanswered;
  try {
    job.reported = askForWhole(connection, printer, job.number, sent);
    job.failure = objection(job, connection.server());
  } catch (const Failure& silence) {
    job.failure =
        unanswered
            ? *unanswered
            : Failure(
                  Trouble::unconfirmedSettings,
                  factOf(
                      job,
                      nameOf(job) +
                          " was sent, but its options could not be confirmed: " + silence.fact().english(),
                      "job [number] on [printer] was sent, but its settings could not be confirmed: [reason]"_fact,
                      {{"[reason]", silence.fact()}}),
                  silence.remedy());
  }
  if (job.reported ? staysAtServer(*job.reported) : !unanswered) {
    unfinished.keep();
  } else {
    job.failure = failureAfterCancelling(*job.failure, unfinished, job);
  }
  return job;
}

void waitForEnd(const Connection& connection, const Printer& printer, SentJob& job, const Report& report) {
  for (std::string shown;; std::this_thread::sleep_for(kBetweenQuestions)) {
    if (const auto text = progressOf(job); text != shown) report(shown = text);
    if (job.reported->state >= IPP_JSTATE_CANCELED || badEnd(*job.reported)) break;
    try {
      job.reported = askForReport(connection, printer, job.number, {});
    } catch (const Failure& failure) {
      job.failure = Failure(Trouble::unconfirmedSettings,
                            "the end of " + nameOf(job) + " is not known: " + failure.fact().english(),
                            failure.remedy());
      return;
    }
  }
  job.failure = objection(job, connection.server());
}

}  // namespace tandemtrim::host
