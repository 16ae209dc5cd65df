#include "host/cups/confirmation.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A job as a server holds it that was asked for these options.
MessageHandle jobWith(const Options& options) {
  MessageHandle job(ippNewRequest(IPP_OP_CREATE_JOB));
  const OptionList list(options);
  cupsEncodeOptions2(job.get(), list.count(), list.get(), IPP_TAG_JOB);
  return job;
}

TEST(OptionsThatAServerKeepsElsewhere, AreNotLookedForInTheJob) {
  const Options sent{{"notify-events", "job-completed"}, {"MVTopMargin", "5"}, {"job-name", "Report"}};
  EXPECT_EQ(optionsOfTheJob(sent), (Options{{"MVTopMargin", "5"}}));
}

class AnOptionThatArrived : public testing::TestWithParam<Option> {};

TEST_P(AnOptionThatArrived, IsConfirmed) {
  const auto& option = GetParam();
  EXPECT_THAT(lostOptions(jobWith({option, {"other", "x"}}), {option}), IsEmpty()) << option.keyword;
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
  Option held;
};

class AnOptionThatChanged : public testing::TestWithParam<Change> {};

TEST_P(AnOptionThatChanged, IsLost) {
  const auto& [asked, held] = GetParam();
  EXPECT_THAT(lostOptions(jobWith({held}), {asked}), ElementsAre(asked.keyword));
}

INSTANTIATE_TEST_SUITE_P(Options, AnOptionThatChanged,
                         testing::Values(Change{{"MVTopMargin", "5"}, {"MVTopMargin", "50"}},
                                         Change{{"MVTopMargin", "5"}, {"MVBottomMargin", "5"}},
                                         Change{{"copies", "2"}, {"copies", "1"}},
                                         Change{{"note", "a"}, {"note", "A"}},
                                         Change{{"note", "cut\rhere"}, {"note", "cut"}},
                                         Change{{"page-ranges", "1-4"}, {"page-ranges", "1-5"}},
                                         Change{{"landscape", "true"}, {"landscape", "false"}}));

TEST(LostOptions, AreNamedInTheirOrder) {
  EXPECT_THAT(lostOptions(jobWith({{"b", "2"}}), {{"c", "3"}, {"b", "2"}, {"a", "1"}}),
              ElementsAre("c", "a"));
}

TEST(TheDocumentsFormat, IsConfirmedByWhatTheServerWasTold) {
  MessageHandle job(ippNewRequest(IPP_OP_CREATE_JOB));
  ippAddString(job.get(), IPP_TAG_JOB, IPP_TAG_MIMETYPE, "document-format-supplied", nullptr,
               "application/vnd.cups-raw");
  EXPECT_THAT(lostOptions(job, {{"raw", "true"}, {"document-format", "application/pdf"}}),
              ElementsAre("document-format"));
}

}  // namespace
}  // namespace tandemtrim::host
