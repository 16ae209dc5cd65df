#include <cstdlib>

#include <gmock/gmock.h>
#include <sys/wait.h>

#include "host/preview/page_answer.hpp"
#include "tests/host/preview/pdf.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

class ThePageProgram : public testing::Test {
 protected:
  // Runs the program in a shell with these arguments and redirections.
  static PageStatus run(const std::string& words) {
    const int status = std::system((std::string(PAGE_PROGRAM " ") + words).c_str());
    EXPECT_TRUE(WIFEXITED(status)) << words;
    return static_cast<PageStatus>(WEXITSTATUS(status));
  }

  test::TemporaryFolder folder_;
  const std::string document_ = folder_.write("report.pdf", test::pdfOf({test::PdfPage{}}));
};

TEST_F(ThePageProgram, RefusesAWrongCommandLine) {
  EXPECT_EQ(run("1 100 <" + document_ + " >/dev/null"), PageStatus::rendered);
  for (const char* words :
       {"", "1", "1 100 x", "0 100", "x 100", "1x 100", "99999999999 100", "1 0", "1 1025"})
    EXPECT_EQ(run(words + (" <" + document_) + " >/dev/null"), PageStatus::notStarted) << words;
}

TEST_F(ThePageProgram, ReportsAMissingPageOrDocument) {
  EXPECT_EQ(run("2 100 <" + document_ + " >/dev/null"), PageStatus::noSuchPage);
  EXPECT_EQ(run("1 100 </dev/null >/dev/null"), PageStatus::broken);
  EXPECT_EQ(run("1 100 <&- >/dev/null"), PageStatus::broken);
}

TEST_F(ThePageProgram, FailsIfItsAnswerCannotBeWritten) {
  EXPECT_EQ(run("1 100 <" + document_ + " >&-"), PageStatus::notStarted);
  EXPECT_EQ(run("1 100 <" + document_ + " >/dev/full"), PageStatus::notStarted);
}

}  // namespace
}  // namespace tandemtrim::host
