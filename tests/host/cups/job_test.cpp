#include "host/cups/job.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TheFormatOfADocument, IsAsTheUserSaysRawFirstElseTheServerDetectsIt) {
  const Option pdf{"document-format", "application/pdf"};
  EXPECT_EQ(documentFormat({{"a", "1"}, pdf}), "application/pdf");
  EXPECT_EQ(documentFormat({pdf, {"raw", "true"}}), "application/vnd.cups-raw");
  EXPECT_EQ(documentFormat({{"a", "1"}}), "application/octet-stream");
}

constexpr const char* kMark = "urn:uuid:1";

struct ListedJob {
  std::optional<int> number;
  const char* mark;
};

// A server's list of the jobs, with an attribute that was not asked for.
MessageHandle listOf(const std::vector<ListedJob>& jobs) {
  MessageHandle list(ippNew());
  for (const auto& job : jobs) {
    if (&job != &jobs.front()) ippAddSeparator(list.get());
    ippAddString(list.get(), IPP_TAG_JOB, IPP_TAG_NAME, "job-name", nullptr, kMark);
    if (job.mark != nullptr)
      ippAddString(list.get(), IPP_TAG_JOB, IPP_TAG_URI, "tandem-trim-request", nullptr, job.mark);
    if (job.number) ippAddInteger(list.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-id", *job.number);
  }
  return list;
}

TEST(AListOfJobs, HasTheNumberOfEachJobWithTheMarkOfARequest) {
  const auto marked = [](const std::vector<ListedJob>& jobs) { return numbersOfMarked(listOf(jobs), kMark); };
  EXPECT_THAT(marked({}), IsEmpty());
  EXPECT_THAT(marked({{7, kMark}}), ElementsAre(7));
  EXPECT_THAT(marked({{1, kMark}, {2, "urn:uuid:2"}, {3, kMark}}), ElementsAre(1, 3));
  EXPECT_THAT(marked({{1, "urn:uuid:2"}, {2, kMark}, {3, nullptr}}), ElementsAre(2));
  EXPECT_THAT(marked({{1, nullptr}, {2, nullptr}}), IsEmpty());
}

TEST(AListOfJobs, HasNoNumberOfAJobWithoutOne) {
  const auto marked = [](const std::vector<ListedJob>& jobs) { return numbersOfMarked(listOf(jobs), kMark); };
  EXPECT_THAT(marked({{std::nullopt, kMark}, {std::nullopt, kMark}}), IsEmpty());
  EXPECT_THAT(marked({{5, "urn:uuid:2"}, {std::nullopt, kMark}}), IsEmpty());
  EXPECT_THAT(marked({{0, kMark}, {-1, kMark}}), IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::host
