#include "host/cli/arguments/value_readers.hpp"

#include <algorithm>
#include <charconv>
#include <string_view>

#include <cups/cups.h>

#include "host/failure.hpp"
#include "host/job/page_ranges.hpp"
#include "host/job/time_of_day.hpp"
#include "host/plain_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kMostCopies = 9999;
constexpr int kHighestPriority = 100;
constexpr int kHighestPort = 65535;

constexpr std::array<std::string_view, 8> kTimes{"no-hold", "indefinite",   "day-time",    "evening",
                                                 "night",   "second-shift", "third-shift", "weekend"};

using MaybeOptions = std::optional<Options>;

// The message is the option with its text, what is wrong with it, and what to write.
Failure wrong(const std::string& option, const std::string& text, const std::string& mistake,
              const std::string& remedy) {
  return Failure(option + " \"" + shortText(text) + "\": " + mistake + "; " + remedy, kWrongCommandLine);
}

// The text's number, if the text is a number from 1 to `largest`.
std::optional<std::string> countUpTo(int largest, std::string_view text) {
  int number = 0;  // also after an error
  const auto* const end = text.data() + text.size();
  const bool isNumber = std::from_chars(text.data(), end, number).ptr == end;
  return isNumber && number >= 1 && number <= largest ? std::optional(std::to_string(number)) : std::nullopt;
}

MaybeOptions copiesFrom(const std::string& text) {
  const auto count = countUpTo(kMostCopies, text);
  return count ? MaybeOptions({{"copies", *count}}) : std::nullopt;
}

MaybeOptions priorityFrom(const std::string& text) {
  const auto priority = countUpTo(kHighestPriority, text);
  return priority ? MaybeOptions({{"job-priority", *priority}}) : std::nullopt;
}

MaybeOptions pagesFrom(const std::string& text) {
  auto pages = parsePageRanges(text);
  if (!pages.mistake) return {{{"page-ranges", pageRangesText(std::move(pages.ranges))}}};
  const auto& part = *pages.mistake;
  throw wrong(
      "-P", text,
      part.empty() ? "a page is missing" : '"' + shortText(part) + "\" is not a page or a range of pages",
      "write pages as 1,3-5,16-, counted from 1");
}

MaybeOptions holdFrom(const std::string& text) {
  if (text == "hold") return {{{"job-hold-until", "indefinite"}}};
  if (text == "immediate") return {{{"job-hold-until", "no-hold"}, {"job-priority", "100"}}};
  if (text == "resume" || text == "restart") {
    throw Failure(
        "-H " + text + " is for a job that was sent before; nothing was sent. Use lp -i JOB -H " + text,
        kWrongCommandLine);
  }
  const bool isTime = isTimeOfDay(text) || std::ranges::count(kTimes, text) != 0;
  return isTime ? MaybeOptions({{"job-hold-until", text}}) : std::nullopt;
}

}  // namespace

const std::array<JobOption, 5> kJobOptions{{
    {"-n", "COPIES", "How many copies to print", "number from 1 to 9999", copiesFrom},
    {"-o", "\"KEYWORD=VALUE ...\"", "Job options as in lp; may be repeated", nullptr,
     [](const std::string& text) { return MaybeOptions(parseOptions(text)); }},
    {"-q", "PRIORITY", "The job's priority, from 1 (lowest) to 100", "number from 1 to 100", priorityFrom},
    {"-H", "WHEN", "When to print: HH:MM (UTC), hold or immediate",
     "time in hours and minutes (UTC), hold or immediate", holdFrom},
    {"-P", "PAGES", "Which pages to print, such as 1,3-5,16", nullptr, pagesFrom},
}};

Options optionsFrom(const JobOption& option, const std::string& text) {
  if (auto options = option.read(text)) return *std::move(options);
  throw wrong(option.name, text, std::string("this is not a ") + option.form,
              "tandem-trim --help lists the options");
}

const std::array<std::pair<const char*, Applications>, 3> kApplicationsTexts{
    {{"on", Applications::on}, {"off", Applications::off}, {"status", Applications::status}}};

Applications applicationsFrom(const std::string& text) {
  for (const auto& [word, meaning] : kApplicationsTexts) {
    if (text == word) return meaning;
  }
  throw wrong("--applications", text, "this is not one of its values", "write on, off or status");
}

Input inputFrom(const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals == 0)
    throw wrong("--set", text, "no setting is named", "write name=text; --json lists the names");
  return {text.substr(0, equals), text.substr(equals + 1)};
}

// An IPv6 address contains colons; it has brackets around it, or no port.
void refuseWrongServer(const std::string& server) {
  if (server.starts_with('/')) return;
  const std::string_view address = std::string_view(server).substr(0, server.find('/'));
  const auto colon = address.rfind(':');
  const auto host = address.substr(0, colon);
  const auto* const remedy = "write host or host:port";
  if (host.empty()) throw wrong("-h", server, "no server is named", remedy);
  const bool hasPort =
      colon != std::string_view::npos && (host.ends_with(']') || host.find(':') == std::string_view::npos);
  if (hasPort && !countUpTo(kHighestPort, address.substr(colon + 1)))
    throw wrong("-h", server, "the port is not a number from 1 to " + std::to_string(kHighestPort), remedy);
}

void refuseWrongPrinter(const std::string& printer) {
  if (printer.empty() || printer.starts_with('/')) {
    throw wrong("-d", printer, "no printer is named",
                "write printer or printer/instance; tandem-trim --list shows the printers");
  }
}

Option mailOption(const std::optional<std::string>& user) {
  std::array<char, HTTP_MAX_HOST> host{};
  httpGetHostname(nullptr, host.data(), static_cast<int>(host.size()));
  // cupsUser() caches its answer, so it is not called when the command line names the user.
  return {"notify-recipient-uri", "mailto:" + (user ? *user : cupsUser()) + "@" + host.data()};
}

}  // namespace tandemtrim::host
