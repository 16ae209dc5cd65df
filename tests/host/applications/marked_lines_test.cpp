#include "host/applications/marked_lines.hpp"

#include <random>

#include <gmock/gmock.h>

#include "host/applications/key_file.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::HasSubstr;

const std::vector<std::string> kLines{"[preferred]", "a=new"};

TEST(MarkedLines, AreRemovedWithoutATraceFromAnyFile) {
  std::mt19937 random(20);
  const std::vector<std::string> pieces{"a", "\n", "\r", "\r\n", "#", "[b]\n", "k=v", " ", "\xC3"};
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 12);
  for (int times = 0; times < 5000; ++times) {
    std::string own;
    for (int left = length(random); left > 0; --left) own += pieces[piece(random)];
    const auto marked = withMarkedLines(own, kLines, Before::file);
    ASSERT_EQ(marked.find(own), 0U);
    const auto parts = partMarkedLines(marked, "file");
    ASSERT_TRUE(parts.isMarked);
    ASSERT_EQ(parts.own, own);
    ASSERT_EQ(withMarkedLines(parts.own, kLines, parts.before), marked);
  }
}

TEST(MarkedLines, TakePrecedenceOverTheFilesOwnLines) {
  const auto text = withMarkedLines("[preferred]\na=old\n[other]\na=1", kLines, Before::file);
  const auto entries = readEntries(text, "file");
  EXPECT_EQ(valueOf(entries, "preferred", "a"), "new");
  EXPECT_EQ(valueOf(entries, "other", "a"), "1");
}

TEST(MarkedLines, RecordWhetherTheFileAndItsFolderExistedBefore) {
  for (const auto before : {Before::file, Before::noFile, Before::noFolder})
    EXPECT_EQ(partMarkedLines(withMarkedLines("", kLines, before), "file").before, before);
}

TEST(MarkedLines, HaveTheLineEndsOfTheFile) {
  const auto text = withMarkedLines("[a]\r\nb=c", kLines, Before::file);
  for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
    EXPECT_EQ(text[at - 1], '\r');
}

TEST(MarkedLines, LeaveLinesThatWereAddedAfterThem) {
  auto text = withMarkedLines("a=b", kLines, Before::file) + "c=d\n";
  EXPECT_EQ(partMarkedLines(text, "file").own, "a=b\nc=d\n");
}

TEST(MarkedLines, AreRefusedIfAMarkIsMissing) {
  const auto text = withMarkedLines("a=b\n", kLines, Before::file);
  const auto second = text.find('\n', text.find("# Lines")) + 1;
  const auto last = text.rfind("# End");
  for (const auto& damaged :
       {text.substr(0, last), "a=b\n" + text.substr(second), text.substr(last) + text.substr(0, last)}) {
    EXPECT_THAT(failureOf([&] { partMarkedLines(damaged, "/a/file"); }).what(),
                testing::AllOf(HasSubstr("/a/file: the line"), HasSubstr("is missing; put it back")))
        << damaged;
  }
}

}  // namespace
}  // namespace tandemtrim::host
