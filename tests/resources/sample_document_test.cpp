#include <cstddef>
#include <string>

#include <gmock/gmock.h>

#include "tests/resources/files.hpp"

namespace tandemtrim::resources {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class SampleDocument : public testing::Test {
 protected:
  std::string document = contentsOf(SAMPLES "/sample.pdf");
};

TEST_F(SampleDocument, IsTheOutputOfItsScript) {
  const auto [status, output] = run("'" SAMPLES "/make_sample_document.py'");
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(output == document) << "run make_sample_document.py > sample.pdf";
}

TEST_F(SampleDocument, IsAPdfOfThreePagesWithTitleAndPageNumber) {
  EXPECT_THAT(document, StartsWith("%PDF-1.4\n"));
  EXPECT_THAT(document, EndsWith("%%EOF\n"));
  EXPECT_THAT(document, HasSubstr("/Title (Tandem Trim Sample Document)"));
  EXPECT_THAT(document, HasSubstr("/Count 3 "));
  for (const auto* page : {"(Page 1 of 3)", "(Page 2 of 3)", "(Page 3 of 3)"})
    EXPECT_THAT(document, HasSubstr(page));
}

TEST_F(SampleDocument, HasATableThatLeadsToEachObject) {
  const auto startAt = document.rfind("startxref\n");
  ASSERT_NE(startAt, std::string::npos);
  const auto table = document.substr(std::stoul(document.substr(startAt + 10)));
  ASSERT_THAT(table, StartsWith("xref\n0 "));
  const auto size = std::stoul(table.substr(7));
  ASSERT_GT(size, 1U);

  constexpr std::size_t kEntryLength = 20;
  const auto entriesAt = table.find('\n', 5) + 1;
  for (std::size_t number = 1; number < size; ++number) {
    const auto offset = std::stoul(table.substr(entriesAt + number * kEntryLength, 10));
    EXPECT_THAT(document.substr(offset, 16), StartsWith(std::to_string(number) + " 0 obj\n"));
  }
}

}  // namespace
}  // namespace tandemtrim::resources
