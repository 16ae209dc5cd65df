#include "host/job/documents.hpp"

#include <csignal>
#include <fstream>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/host/failure_matcher.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::HasSubstr;

std::string contentOf(Document& document) {
  std::string content;
  document.read([&](std::span<const char> piece) {
    content.append(piece.data(), piece.size());
    return true;
  });
  return content;
}

TEST(ADocument, HandsOverTheWholeFile) {
  const test::TemporaryFolder folder;
  const std::string text(200'001, 'x');
  Document document(folder.write("some folder/report.pdf", text));
  EXPECT_EQ(document.name(), "report.pdf");
  EXPECT_EQ(document.size(), text.size());
  EXPECT_EQ(contentOf(document), text);
}

TEST(ADocument, StopsWhenItsReaderStops) {
  const test::TemporaryFolder folder;
  Document document(folder.write("report.pdf", std::string(200'000, 'x')));
  int pieces = 0;
  EXPECT_FALSE(document.read([&](std::span<const char>) { return ++pieces < 2; }));
  EXPECT_EQ(pieces, 2);
}

TEST(ADocument, ThatIsMissingUnreadableOrEmptyIsRefusedByName) {
  const test::TemporaryFolder folder;
  for (const auto& file :
       {std::string("/nowhere.pdf"), folder.path().string(), folder.write("empty.pdf", "")}) {
    const auto failure = failureOf([&] { const Document document(file); });
    EXPECT_EQ(failure.exitStatus(), kFailed);
    EXPECT_THAT(failure.what(), HasSubstr(std::filesystem::path(file).filename().string()));
  }
}

TEST(ADocument, CanBeReadAgainAfterItsFileIsRemoved) {
  const test::TemporaryFolder folder;
  const std::string text(200'001, 'x');
  const auto file = folder.write("report.pdf", text);
  Document document(file);
  document.read([](auto) { return false; });
  std::filesystem::remove(file);
  EXPECT_EQ(contentOf(document), text);
  EXPECT_EQ(contentOf(document), text);
}

TEST(ADocument, IsOpenedAgainForAnotherReader) {
  const test::TemporaryFolder folder;
  const auto file = folder.write("report.pdf", "%PDF-1.7 text");
  FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  lseek(opened.get(), 5, SEEK_SET);
  const Document document(std::move(opened), "Report");
  EXPECT_EQ(document.name(), "Report");
  EXPECT_EQ(document.beginning(), "%PDF-1.7");
  EXPECT_EQ(document.size(), 13U);
  std::filesystem::remove(file);
  const auto again = document.openAgain();
  std::string text(20, '\0');
  EXPECT_EQ(read(again.get(), text.data(), text.size()), 13);
}

// For example, the rest of a file whose first line a shell has read.
TEST(ADocument, ThatBeginsWithinItsFileIsNotOpenedAgain) {
  const test::TemporaryFolder folder;
  const auto file = folder.write("report", "first line\nrest");
  const FileDescriptor before(dup(STDIN_FILENO));
  const FileDescriptor rest(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  dup2(rest.get(), STDIN_FILENO);
  fseeko(stdin, 11, SEEK_SET);
  Document document("-");
  EXPECT_EQ(document.name(), "(stdin)");
  EXPECT_EQ(document.size(), 4U);
  EXPECT_FALSE(document.openAgain().isOpen());
  EXPECT_EQ(contentOf(document), "rest");
  EXPECT_EQ(contentOf(document), "rest") << "the second time";
  dup2(before.get(), STDIN_FILENO);
  std::clearerr(stdin);
}

TEST(ADocument, ThatComesThroughAPipeIsKeptToBeReadAgain) {
  const test::TemporaryFolder folder;
  const auto file = (folder.path() / "pipe").string();
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const std::string text(200'001, 'x');
  std::thread writer([&] { std::ofstream(file) << text; });
  Document document(file);
  EXPECT_EQ(document.size(), std::nullopt);
  document.keep();
  writer.join();
  EXPECT_EQ(document.size(), text.size());
  EXPECT_EQ(document.name(), "pipe");
  EXPECT_EQ(contentOf(document), text);
  EXPECT_EQ(contentOf(document), text);
}

// While it exists, no file can grow beyond three bytes.
class NoRoom {
 public:
  NoRoom() {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const struct rlimit small { 3, limit_.rlim_max };
    setrlimit(RLIMIT_FSIZE, &small);
  }
  NoRoom(const NoRoom&) = delete;
  NoRoom& operator=(const NoRoom&) = delete;
  ~NoRoom() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit limit_ {};
};

// A document of the text "four", from a new pipe.
Document documentFromPipe(const std::string& file) {
  EXPECT_EQ(mkfifo(file.c_str(), 0600), 0);
  const std::jthread writer([&] { std::ofstream(file) << "four"; });
  return Document(file);
}

TEST(ADocument, ThatIsAFileNeedsNoRoomToBeKept) {
  const test::TemporaryFolder folder;
  Document document(folder.write("report.pdf", "four"));
  const NoRoom noRoom;
  document.keep();
  EXPECT_EQ(contentOf(document), "four");
}

TEST(ADocument, ThatCannotBeKeptWholeIsRefused) {
  const test::TemporaryFolder folder;
  const auto file = (folder.path() / "pipe").string();
  Document document = documentFromPipe(file);
  const NoRoom noRoom;
  const auto failure = failureOf([&] { document.keep(); });
  EXPECT_THAT(failure.what(), HasSubstr("pipe cannot be kept until it is printed: File too large"));
}

// A part of it may be at the server already.
TEST(ADocument, ThatCannotBeReadAgainIsNotReportedAsUnsent) {
  const test::TemporaryFolder folder;
  const auto file = (folder.path() / "pipe").string();
  Document document = documentFromPipe(file);
  EXPECT_EQ(contentOf(document), "four");
  const std::string said = failureOf([&] { contentOf(document); }).what();
  EXPECT_EQ(said, file + " cannot be read: Illegal seek");
  const std::string missing = failureOf([] { const Document nowhere("/nowhere.pdf"); }).what();
  EXPECT_THAT(missing, HasSubstr("; nothing was sent."));
}

TEST(Documents, AreOpenedInTheirOrder) {
  const test::TemporaryFolder folder;
  const auto documents = openDocuments({folder.write("a.pdf", "a"), folder.write("b.pdf", "b")});
  ASSERT_EQ(documents.size(), 2U);
  EXPECT_EQ(documents[0].name(), "a.pdf");
  EXPECT_EQ(documents[1].name(), "b.pdf");
}

}  // namespace
}  // namespace tandemtrim::host
