#include "host/cups/confirmation.hpp"

#include <algorithm>
#include <array>
#include <optional>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The job that a server makes from a request with these options.
MessageHandle jobWith(const Options& options) {
  MessageHandle job(ippNewRequest(IPP_OP_CREATE_JOB));
  const OptionList list(options);
  cupsEncodeOptions2(job.get(), list.count(), list.get(), IPP_TAG_JOB);
  return job;
}

std::vector<std::string> lostOf(const MessageHandle& job, const Options& sent) {
  std::vector<std::string> keywords;
  for (const auto& option : reportedJob(job, {sent, 0, 0}).lost) keywords.push_back(option.keyword);
  return keywords;
}

TEST(OptionsThatAServerKeepsElsewhere, AreNotLookedForInTheJob) {
  const Options sent{{"notify-events", "job-completed"}, {"MVTopMargin", "5"}, {"job-name", "Report"}};
  EXPECT_EQ(optionsOfTheJob(sent), (Options{{"MVTopMargin", "5"}}));
}

class AnOptionThatArrived : public testing::TestWithParam<Option> {};

TEST_P(AnOptionThatArrived, IsConfirmed) {
  const auto& option = GetParam();
  EXPECT_THAT(lostOf(jobWith({option, {"other", "x"}}), {option}), IsEmpty()) << option.keyword;
}

INSTANTIATE_TEST_SUITE_P(Options, AnOptionThatArrived,
                         testing::Values(Option{"MVTopMargin", "5"}, Option{"MVTandemTrim", "On"},
                                         Option{"copies", "2"}, Option{"copies", "02"},
                                         Option{"landscape", "true"}, Option{"collate", "false"},
                                         Option{"page-ranges", "1-4,7"}, Option{"orientation-requested", "4"},
                                         Option{"printer-resolution", "600dpi"},
                                         Option{"sides", "two-sided-long-edge"},
                                         Option{"note", "it's \"x\" \\ y,z"}, Option{"empty", ""},
                                         Option{"finishings", "4,5"}, Option{"UPPER", "TRUE"}));

struct Change {
  Option asked;
  Option atServer;
};

class AnOptionThatChanged : public testing::TestWithParam<Change> {};

TEST_P(AnOptionThatChanged, IsLost) {
  const auto& [asked, atServer] = GetParam();
  EXPECT_THAT(lostOf(jobWith({atServer}), {asked}), ElementsAre(asked.keyword));
}

INSTANTIATE_TEST_SUITE_P(Options, AnOptionThatChanged,
                         testing::Values(Change{{"MVTopMargin", "5"}, {"MVTopMargin", "50"}},
                                         Change{{"MVTopMargin", "5"}, {"MVBottomMargin", "5"}},
                                         Change{{"copies", "2"}, {"copies", "1"}},
                                         Change{{"note", "a"}, {"note", "A"}},
                                         Change{{"note", "a"}, {"note", "no-hold"}},
                                         Change{{"note", "cut\rhere"}, {"note", "cut"}},
                                         Change{{"page-ranges", "1-4"}, {"page-ranges", "1-5"}},
                                         Change{{"landscape", "true"}, {"landscape", "false"}}));

TEST(LostOptions, AreNamedInTheOrderInWhichTheyWereSent) {
  EXPECT_THAT(lostOf(jobWith({{"b", "2"}}), {{"c", "3"}, {"b", "2"}, {"a", "1"}}), ElementsAre("c", "a"));
}

TEST(LostOptions, HaveTheValueAtTheServerIfTheJobHasThem) {
  const auto lost = reportedJob(jobWith({{"a", "2"}}), {{{"a", "1"}, {"b", "3"}}, 0, 0}).lost;
  ASSERT_EQ(lost.size(), 2U);
  EXPECT_EQ(lost[0].atServer, "2");
  EXPECT_EQ(lost[1].atServer, std::nullopt);
}

TEST(AnOptionThatLibcupsLeavesOut, IsLostWhateverTheServerHas) {
  const MessageHandle job(ippNewRequest(IPP_OP_CREATE_JOB));
  ippAddOctetString(job.get(), IPP_TAG_JOB, "note-supported", "", 0);
  EXPECT_THAT(lostOf(job, {{"note-supported", "a"}}), ElementsAre("note-supported"));
}

TEST(TheDocumentsFormat, IsConfirmedByTheFormatThatTheServerReceived) {
  MessageHandle job(ippNewRequest(IPP_OP_CREATE_JOB));
  ippAddString(job.get(), IPP_TAG_JOB, IPP_TAG_MIMETYPE, "document-format-supplied", nullptr,
               "application/pdf");
  EXPECT_THAT(lostOf(job, {{"raw", "true"}, {"document-format", "application/pdf"}}),
              ElementsAre("raw", "document-format"));
  job.reset(ippNewRequest(IPP_OP_CREATE_JOB));
  ippAddString(job.get(), IPP_TAG_JOB, IPP_TAG_MIMETYPE, "document-format-supplied", nullptr,
               "application/vnd.cups-raw");
  EXPECT_THAT(lostOf(job, {{"raw", "true"}, {"document-format", "application/pdf"}}), IsEmpty());
}

TEST(AJobOnHold, MayHaveBeenReleasedSinceItWasSent) {
  const auto job = jobWith({{"job-hold-until", "no-hold"}});
  for (const char* due : {"weekend", "23:15", "no-hold"})
    EXPECT_THAT(lostOf(job, {{"job-hold-until", due}}), IsEmpty()) << due;
  EXPECT_THAT(lostOf(job, {{"job-hold-until", "indefinite"}}), ElementsAre("job-hold-until"));
  EXPECT_THAT(lostOf(jobWith({{"job-hold-until", "night"}}), {{"job-hold-until", "weekend"}}),
              ElementsAre("job-hold-until"));
}

// A job as a server describes it; empty numbers are left out.
struct Described {
  ipp_jstate_t state;
  const char* reasons;
  std::optional<int> documents;
  std::optional<int> kilobytes;
};

ReportedJob reportOf(const Described& described, const JobContent& sent) {
  const MessageHandle job(ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES));
  ippAddInteger(job.get(), IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", described.state);
  ippAddString(job.get(), IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-state-reasons", nullptr, described.reasons);
  if (described.documents)
    ippAddInteger(job.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "number-of-documents", *described.documents);
  if (described.kilobytes)
    ippAddInteger(job.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-k-octets", *described.kilobytes);
  return reportedJob(job, sent);
}

std::string incompletenessOf(const Described& described, const JobContent& sent) {
  return reportOf(described, sent).incomplete;
}

TEST(AJob, IsIncompleteIfTheServerHasFewerDocumentsOrBytesOrWaitsForMore) {
  const JobContent sent{{}, 2, 2049};
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 1, 3}, sent), "1 of 2 documents");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 0, 3}, sent), "0 of 2 documents");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_COMPLETED, "none", 1, 3}, sent), "1 of 2 documents");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 2, 2}, sent), "2 of 3 KB");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", std::nullopt, 2}, sent), "2 of 3 KB");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_HELD, "job-incoming", 2, 3}, sent), "all but the last document");
}

TEST(AJob, MayBeArrivingUnlessTheServerHasAllDocumentsAndExpectsNoMore) {
  const JobContent sent{{}, 2, 2049};
  EXPECT_TRUE(reportOf({IPP_JSTATE_PENDING, "none", 1, 3}, sent).isArriving);
  EXPECT_TRUE(reportOf({IPP_JSTATE_PENDING, "none", std::nullopt, 2}, sent).isArriving);
  EXPECT_TRUE(reportOf({IPP_JSTATE_HELD, "job-incoming", 2, 2}, sent).isArriving);
  EXPECT_FALSE(reportOf({IPP_JSTATE_PENDING, "none", 2, 2}, sent).isArriving) << "it broke off";
  for (const auto documents : {std::optional(2), std::optional<int>()})
    EXPECT_FALSE(reportOf({IPP_JSTATE_PENDING, "none", documents, 3}, sent).isArriving) << "it is whole";
}

TEST(AJob, IsIncompleteIfTheServerNeitherAnsweredNorCounts) {
  const JobContent sent{{}, 1, 2048, false};
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", std::nullopt, std::nullopt}, sent),
            "an unknown part");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 1, std::nullopt}, sent), "");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", std::nullopt, 2}, sent), "");
}

TEST(AJob, HasEveryReasonForItsStateInTheServersOrder) {
  const MessageHandle job(ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES));
  const std::array reasons{"none", "job-printing", "cups-waiting-for-paper"};
  ippAddStrings(job.get(), IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-state-reasons", 3, nullptr, reasons.data());
  EXPECT_EQ(reportedJob(job, {}).reasons, "job-printing,cups-waiting-for-paper");
}

// What a server answers that is asked for these attributes of a job.
MessageHandle onlyThose(const std::vector<std::string>& names, const MessageHandle& job) {
  MessageHandle answer(ippNew());
  const auto isAmongThem = [](void* asked, ipp_t*, ipp_attribute_t* attribute) -> int {
    const auto& all = *static_cast<const std::vector<std::string>*>(asked);
    return std::ranges::count(all, std::string(ippGetName(attribute))) > 0 ? 1 : 0;
  };
  auto asked = names;
  ippCopyAttributes(answer.get(), job.get(), 0, isAmongThem, &asked);
  return answer;
}

TEST(AJob, IsReportedFromTheAttributesThatTheServerIsAskedFor) {
  const JobContent sent{{{"note", "a"}, {"raw", "true"}}, 2, 2048};
  const auto job = jobWith({{"note", "a"}});
  auto* const to = job.get();
  ippAddInteger(to, IPP_TAG_JOB, IPP_TAG_INTEGER, "job-id", 17);
  ippAddInteger(to, IPP_TAG_JOB, IPP_TAG_ENUM, "job-state", IPP_JSTATE_PROCESSING);
  ippAddString(to, IPP_TAG_JOB, IPP_TAG_KEYWORD, "job-state-reasons", nullptr, "job-printing");
  ippAddString(to, IPP_TAG_JOB, IPP_TAG_TEXT, "job-printer-state-message", nullptr, "cutting");
  ippAddInteger(to, IPP_TAG_JOB, IPP_TAG_INTEGER, "job-media-sheets-completed", 3);
  ippAddString(to, IPP_TAG_JOB, IPP_TAG_MIMETYPE, "document-format-supplied", nullptr,
               "application/vnd.cups-raw");
  ippAddInteger(to, IPP_TAG_JOB, IPP_TAG_INTEGER, "job-k-octets", 1);
  const auto asked = attributesToAsk(sent);
  EXPECT_THAT(asked, testing::Contains("job-id"));
  const auto reported = reportedJob(onlyThose(asked, job), sent);
  EXPECT_EQ(reported.state, IPP_JSTATE_PROCESSING);
  EXPECT_EQ(reported.reasons, "job-printing");
  EXPECT_EQ(reported.message, "cutting");
  EXPECT_EQ(reported.sheets, 3U);
  EXPECT_EQ(reported.incomplete, "1 of 2 KB");
  EXPECT_THAT(reported.lost, IsEmpty());
  ippAddInteger(to, IPP_TAG_JOB, IPP_TAG_INTEGER, "number-of-documents", 1);
  EXPECT_EQ(reportedJob(onlyThose(asked, job), sent).incomplete, "1 of 2 documents");
}

TEST(AJob, HasThePrintersMessageAndTheNumberOfPrintedSheets) {
  const MessageHandle job(ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES));
  EXPECT_EQ(reportedJob(job, {}).message, "");
  ippAddString(job.get(), IPP_TAG_JOB, IPP_TAG_TEXT, "job-printer-state-message", nullptr, "cutting");
  ippAddInteger(job.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-media-sheets-completed", 3);
  EXPECT_EQ(reportedJob(job, {}).message, "cutting");
  EXPECT_EQ(reportedJob(job, {}).sheets, 3U);
}

TEST(AJob, IgnoresInvalidStatesAndNumbers) {
  const ReportedJob unknown;
  for (const int state : {0, 2, 10, 1000})
    EXPECT_EQ(reportOf({static_cast<ipp_jstate_t>(state), "none", {}, {}}, {}).state, unknown.state) << state;
  const MessageHandle job(ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES));
  ippAddInteger(job.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-media-sheets-completed", -3);
  EXPECT_EQ(reportedJob(job, {}).sheets, 0U);
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", -1, -1}, {{}, 1, 2048}), "");
}

TEST(AJob, IsCompleteIfTheServerHasWhatWasSentOrMoreOrDoesNotCount) {
  const JobContent sent{{}, 2, 2048};
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 2, 2}, sent), "");
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PROCESSING, "job-printing", 3, 9}, sent), "") << "with a banner";
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_COMPLETED, "none", 0, 2}, sent), "") << "thrown away once printed";
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", 0, 0}, {}), "") << "nothing is expected";
  EXPECT_EQ(incompletenessOf({IPP_JSTATE_PENDING, "none", std::nullopt, std::nullopt}, sent), "");
}

}  // namespace
}  // namespace tandemtrim::host
