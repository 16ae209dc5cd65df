#include "host/cups/sent_job.hpp"

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using testing::HasSubstr;

// A job with seven options, in this state at the server.
SentJob jobInState(ipp_jstate_t state, const std::string& reasons, const std::string& incomplete,
                   const std::vector<LostOption>& lost) {
  SentJob job{17, "Morva", 7, ReportedJob{state, reasons, "", 0, incomplete, lost}, {}};
  job.failure = objection(job, "the print server at desk:631");
  return job;
}

TEST(AJobsText, SaysHowManyOptionsAreConfirmed) {
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_PENDING, "", "", {})), "job 17 on Morva: 7 of 7 options confirmed");
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_PENDING, "", "", {{"a", "1", "2"}, {"b", "3", std::nullopt}})),
            "job 17 on Morva: 5 of 7 options confirmed; lost: a (sent \"1\", the server has \"2\"), b");
}

TEST(AJobsText, IsShortHoweverLongTheLostValuesAre) {
  const std::string value(300, 'x');
  const auto text = jobText(jobInState(IPP_JSTATE_PENDING, "", "", {{"a", value, value}}));
  EXPECT_THAT(text, testing::Not(HasSubstr(value)));
  EXPECT_THAT(text, HasSubstr("(sent \"" + value.substr(0, 200) + "...\", the server has \"" +
                              value.substr(0, 200) + "...\")"));
}

TEST(AJobsText, SaysWhyItIsHeld) {
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_HELD, "job-hold-until-specified", "", {})),
            "job 17 on Morva: 7 of 7 options confirmed; it is held (job-hold-until-specified)");
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_STOPPED, "printer-stopped", "", {})),
            "job 17 on Morva: 7 of 7 options confirmed; it is held (printer-stopped)");
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_HELD, "", "", {})),
            "job 17 on Morva: 7 of 7 options confirmed; it is held");
}

TEST(AJob, ThatHasEndedWithoutBeingPrintedIsNotConfirmed) {
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_CANCELED, "job-canceled-by-user", "", {})),
            "job 17 on Morva was cancelled at the print server at desk:631 (job-canceled-by-user)");
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_ABORTED, "", "", {})),
            "job 17 on Morva was aborted at the print server at desk:631");
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_STOPPED, "job-completed-with-errors", "", {})),
            "job 17 on Morva was stopped at the print server at desk:631 (job-completed-with-errors)");
}

TEST(AJob, ThatIsCompletedIsPrintedWhateverItsReasonsAre) {
  EXPECT_EQ(jobText(jobInState(IPP_JSTATE_COMPLETED, "job-completed-with-errors", "", {})),
            "job 17 on Morva: 7 of 7 options confirmed");
}

TEST(AJob, ThatIsIncompleteIsNotConfirmedEvenIfItsOptionsAre) {
  for (const auto& lost : {std::vector<LostOption>{}, {{"a", "1", std::nullopt}}})
    EXPECT_EQ(jobText(jobInState(IPP_JSTATE_HELD, "job-incoming", "0 of 1 documents", lost)),
              "job 17 on Morva is incomplete: the print server at desk:631 has 0 of 1 documents of it; "
              "print it again");
}

TEST(AJob, ThatIsNotConfirmedIsReportedInADialog) {
  const auto words = [](const SentJob& job) { return test::inADialog(job.failure->fact()); };
  EXPECT_EQ(words(jobInState(IPP_JSTATE_CANCELED, "job-canceled-by-user", "", {})),
            "job 17 on Morva was cancelled at the print server (job-canceled-by-user)");
  for (const auto state : {IPP_JSTATE_ABORTED, IPP_JSTATE_STOPPED})
    EXPECT_EQ(words(jobInState(state, "job-completed-with-errors", "", {})),
              "job 17 on Morva failed at the print server (job-completed-with-errors)");
  EXPECT_EQ(words(jobInState(IPP_JSTATE_HELD, "", "0 of 1 documents", {})),
            "job 17 on Morva is incomplete at the print server");
  EXPECT_EQ(words(jobInState(IPP_JSTATE_PENDING, "", "", {{"a", "1", "2"}, {"b", "3", std::nullopt}})),
            "job 17 on Morva has lost these settings: a (1 → 2), b (3)");
}

TEST(AJob, IsAtTheServerEvenIfItsSettingsAreLostOrUnconfirmed) {
  SentJob job{17, "Morva", 7};
  EXPECT_TRUE(isAtServer(job));
  for (const auto trouble : {Trouble::lostSettings, Trouble::unconfirmedSettings}) {
    job.failure = Failure(trouble, "");
    EXPECT_TRUE(isAtServer(job));
  }
  for (const auto trouble :
       {Trouble::other, Trouble::unconfirmedJob, Trouble::cancelled, Trouble::noServer}) {
    job.failure = Failure(trouble, "");
    EXPECT_FALSE(isAtServer(job));
  }
}

}  // namespace
}  // namespace tandemtrim::host
