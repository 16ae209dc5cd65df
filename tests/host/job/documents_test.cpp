#include "host/job/documents.hpp"

#include <atomic>
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

TEST(ADocument, OfAnyLengthIsHandedOverWhole) {
  const test::TemporaryFolder folder;
  for (const std::size_t length : {1U, 65535U, 65536U, 65537U}) {
    Document document(folder.write("report.pdf", std::string(length, 'x')));
    EXPECT_EQ(contentOf(document).size(), length);
  }
}

TEST(ADocument, OfTheKernelHasNoSizeBeforeItsEnd) {
  Document document("/proc/version");
  EXPECT_EQ(document.size(), std::nullopt);
  EXPECT_THAT(contentOf(document), testing::StartsWith("Linux"));
}

TEST(ADocument, IsClosedAtTheEnd) {
  const test::TemporaryFolder folder;
  const auto file = folder.write("report.pdf", "text");
  const auto openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = openFiles();
  { const Document document(file); }
  EXPECT_EQ(openFiles(), before);
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

TEST(ADocument, ThatIsRefusedIsNamedWithTheFactAndWhatToDo) {
  const test::TemporaryFolder folder;
  const std::string advice = "; nothing was sent. Name a file that exists and that you may read";
  const auto path = folder.path().string();
  const auto wordsOf = [](const auto& make) { return std::string(failureOf(make).what()); };
  EXPECT_EQ(wordsOf([] { const Document document(""); }), "the name of a file is empty" + advice);
  EXPECT_EQ(wordsOf([] { const Document document("/nowhere.pdf"); }),
            "/nowhere.pdf cannot be read: No such file or directory" + advice);
  EXPECT_EQ(wordsOf([&] { const Document document(path); }),
            path + " cannot be read: Is a directory" + advice);
  EXPECT_EQ(wordsOf([] { const Document document(FileDescriptor(-1), "Report"); }),
            "Report cannot be read: Bad file descriptor" + advice);
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

TEST(ADocument, ThatIsEmptyStandardInputIsCalledSo) {
  const FileDescriptor before(dup(STDIN_FILENO));
  const FileDescriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  dup2(nothing.get(), STDIN_FILENO);
  const std::string said = failureOf([] { const Document document("-"); }).what();
  dup2(before.get(), STDIN_FILENO);
  std::clearerr(stdin);
  EXPECT_EQ(said, "standard input is empty; nothing was sent. Print a document that is not empty");
}

// So that a user can cancel while a program that writes into the pipe is silent.
TEST(ADocument, PassesAnEmptyPieceWhenASignalComesWhileAPipeIsSilent) {
  struct sigaction before {};
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGUSR1, &action, &before);
  const test::TemporaryFolder folder;
  const auto file = (folder.path() / "pipe").string();
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  std::atomic<bool> isInterrupted = false;
  const auto reader = pthread_self();
  {
    const std::jthread writer([&] {
      std::ofstream pipe(file);
      pipe << "four" << std::flush;
      for (; !isInterrupted; std::this_thread::sleep_for(std::chrono::milliseconds(1)))
        pthread_kill(reader, SIGUSR1);
      pipe << "more";
    });
    std::vector<std::string> pieces;
    Document document(file);
    EXPECT_TRUE(document.read([&](std::span<const char> piece) {
      if (piece.empty()) isInterrupted = true;
      if (pieces.empty() || !piece.empty()) pieces.emplace_back(piece.begin(), piece.end());
      return true;
    }));
    EXPECT_TRUE(isInterrupted.exchange(true));
    EXPECT_THAT(pieces, testing::ElementsAre("four", "more"));
  }
  sigaction(SIGUSR1, &before, nullptr);
}

TEST(ADocument, EndsThoughASignalInterruptedACallBefore) {
  const test::TemporaryFolder folder;
  Document document(folder.write("report.pdf", "four"));
  int pieces = 0;
  document.read([&](std::span<const char>) {
    errno = EINTR;
    return ++pieces < 3;
  });
  EXPECT_EQ(pieces, 1);
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

// While it exists, a limit of the process is small.
class SmallLimit {
 public:
  SmallLimit(__rlimit_resource resource, rlim_t most) : resource_(resource) {
    getrlimit(resource_, &limit_);
    const struct rlimit small { most, limit_.rlim_max };
    setrlimit(resource_, &small);
  }
  SmallLimit(const SmallLimit&) = delete;
  SmallLimit& operator=(const SmallLimit&) = delete;
  ~SmallLimit() { setrlimit(resource_, &limit_); }

 private:
  __rlimit_resource resource_;
  struct rlimit limit_ {};
};

// While it exists, no file can grow beyond three bytes.
class NoRoom {
 public:
  NoRoom() = default;
  NoRoom(const NoRoom&) = delete;
  NoRoom& operator=(const NoRoom&) = delete;
  ~NoRoom() { std::signal(SIGXFSZ, handler_); }

 private:
  void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
  SmallLimit limit_{RLIMIT_FSIZE, 3};
};

// A document of this text, which a pipe can hold, from a new pipe.
Document documentFromPipe(const std::string& file, const std::string& text = "four") {
  EXPECT_EQ(mkfifo(file.c_str(), 0600), 0);
  const std::jthread writer([&] { std::ofstream(file) << text; });
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
  for (const std::size_t length : {4U, 20'000U}) {
    const auto file = (folder.path() / std::to_string(length)).string();
    Document document = documentFromPipe(file, std::string(length, 'x'));
    const NoRoom noRoom;
    const auto failure = failureOf([&] { document.keep(); });
    EXPECT_THAT(failure.what(), HasSubstr(" cannot be kept until it is printed: File too large"));
  }
}

TEST(ADocument, ThatCannotBeKeptForWantOfAFileIsRefused) {
  const test::TemporaryFolder folder;
  Document document = documentFromPipe((folder.path() / "pipe").string());
  const auto failure = failureOf([&] {
    const SmallLimit noMoreFiles(RLIMIT_NOFILE, 3);
    document.keep();
  });
  EXPECT_THAT(failure.what(), HasSubstr("pipe cannot be kept until it is printed: Too many open files"));
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
