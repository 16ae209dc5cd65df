#include "host/portal/document_copy.hpp"

#include <array>
#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <glib.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

using testing::HasSubstr;

// While it exists, no file can grow beyond 300,000 bytes.
class FileLimit {
 public:
  FileLimit() {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{300'000, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FileLimit(const FileLimit&) = delete;
  FileLimit& operator=(const FileLimit&) = delete;
  ~FileLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_{};
};

// While it exists, no thread can start: each needs a stack for which a program's address space has no room.
class NoThreads {
 public:
  NoThreads() {
    constexpr std::size_t kEndless = std::size_t{1} << 48U;
    pthread_getattr_default_np(&before_);
    pthread_attr_t endless;
    pthread_attr_init(&endless);
    pthread_attr_setstacksize(&endless, kEndless);
    pthread_setattr_default_np(&endless);
    pthread_attr_destroy(&endless);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;
  ~NoThreads() {
    pthread_setattr_default_np(&before_);
    pthread_attr_destroy(&before_);
  }

 private:
  pthread_attr_t before_{};
};

class CopiedDocument : public testing::Test {
 protected:
  struct Result {
    std::string content;
    std::string failure;
    bool isCopied = false;
  };

  // Runs the main loop until the copy is made or has failed.
  static Result copyOf(int document) {
    Result result;
    bool isDone = false;
    const DocumentCopy copy(FileDescriptor(document),
                            [&](const FileDescriptor& file, const std::optional<Failure>& failure) {
                              isDone = true;
                              result.isCopied = file.isOpen();
                              if (failure) result.failure = failure->what();
                              if (file.isOpen()) result.content = contentOf(file.get());
                            });
    while (!isDone) g_main_context_iteration(nullptr, TRUE);
    return result;
  }

  // The same, but returns the copy itself.
  static FileDescriptor keptCopyOf(const std::string& path) {
    bool isDone = false;
    FileDescriptor kept(-1);
    const DocumentCopy copy(FileDescriptor(open(path.c_str(), O_RDONLY)),
                            [&](FileDescriptor file, const auto&) {
                              kept = std::move(file);
                              isDone = true;
                            });
    while (!isDone) g_main_context_iteration(nullptr, TRUE);
    return kept;
  }

  static std::string contentOf(int file) {
    std::string content(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(file, content.data(), content.size(), 0), static_cast<ssize_t>(content.size()));
    return content;
  }

  std::string write(const std::string& content) { return folder.write("document", content); }

  test::TemporaryFolder folder;
};

TEST_F(CopiedDocument, IsTheWholeFileEvenIfItsBeginningWasRead) {
  std::string numbers;
  for (int number = 0; numbers.size() < 600'000; ++number) numbers += std::to_string(number);
  for (const std::size_t size : {0, 1, 262'144, 262'145, 600'000}) {
    const auto content = numbers.substr(0, size);
    const int file = open(write(content).c_str(), O_RDONLY);
    lseek(file, 100, SEEK_SET);
    const auto result = copyOf(file);
    EXPECT_TRUE(result.isCopied && result.content == content) << size << " bytes";
  }
}

TEST_F(CopiedDocument, IsAllThatComesThroughAPipe) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], "two ", 4), 4);
  ASSERT_EQ(::write(ends[1], "pieces", 6), 6);
  close(ends[1]);
  EXPECT_EQ(copyOf(ends[0]).content, "two pieces");
}

TEST_F(CopiedDocument, IsUnchangedWhenTheProgramChangesItsFile) {
  const auto kept = keptCopyOf(write("before"));
  write("afterwards");
  EXPECT_EQ(contentOf(kept.get()), "before");
}

TEST_F(CopiedDocument, IsNotInheritedByOtherPrograms) {
  const auto kept = keptCopyOf(write("content"));
  EXPECT_NE(fcntl(kept.get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(CopiedDocument, IsReadableForTheUserOnly) {
  const auto kept = keptCopyOf(write("content"));
  struct stat status {};
  ASSERT_EQ(fstat(kept.get(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(CopiedDocument, IsNeverVisibleInTheTemporaryFolderIfFilesNeedNoNameThere) {
  const FileDescriptor nameless(open(g_get_tmp_dir(), O_TMPFILE | O_RDWR, 0600));
  const auto path = write("content");
  const FileDescriptor changes(inotify_init1(IN_NONBLOCK));
  ASSERT_GE(inotify_add_watch(changes.get(), g_get_tmp_dir(), IN_CREATE | IN_MOVED_TO), 0);
  EXPECT_TRUE(keptCopyOf(path).isOpen());
  std::array<char, 4096> change{};
  const bool hadAName = read(changes.get(), change.data(), change.size()) > 0;
  EXPECT_EQ(hadAName, !nameless.isOpen());
}

TEST_F(CopiedDocument, IsMadeOnlyFromAFileOrAPipe) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
  close(ends[1]);
  for (const int other :
       {open("/", O_RDONLY), open("/dev/zero", O_RDONLY), ends[0], open("/dev/null", O_RDONLY)}) {
    const auto result = copyOf(other);
    EXPECT_FALSE(result.isCopied);
    EXPECT_THAT(result.failure, HasSubstr("neither a file nor a pipe"));
  }
}

TEST_F(CopiedDocument, IsNotMadeFromADescriptorThatIsClosedOrWriteOnly) {
  for (const int file : {-1, open(write("content").c_str(), O_WRONLY)})
    EXPECT_THAT(copyOf(file).failure, HasSubstr("the document cannot be read: Bad file descriptor"));
}

TEST_F(CopiedDocument, IsRefusedIfItDoesNotFit) {
  const int file = open(write(std::string(600'000, 'x')).c_str(), O_RDONLY);
  const FileLimit limit;
  const auto result = copyOf(file);
  EXPECT_FALSE(result.isCopied);
  EXPECT_THAT(result.failure, HasSubstr("the document cannot be kept in " + std::string(g_get_tmp_dir())));
}

TEST_F(CopiedDocument, IsRefusedIfTheSystemIsOutOfThreads) {
  const int file = open(write("content").c_str(), O_RDONLY);
  std::optional<NoThreads> shortage{std::in_place};
  std::string reason;
  const DocumentCopy copy(FileDescriptor(file), [&](const FileDescriptor& kept, const auto& failure) {
    EXPECT_FALSE(kept.isOpen());
    reason = failure ? failure->what() : "no failure";
  });
  shortage.reset();
  while (reason.empty()) g_main_context_iteration(nullptr, TRUE);
  EXPECT_THAT(reason, HasSubstr("the document cannot be read: "));
}

TEST_F(CopiedDocument, IsNotDeliveredOnceTheObjectIsGone) {
  bool isCalled = false;
  {
    const DocumentCopy copy(FileDescriptor(open(write("content").c_str(), O_RDONLY)),
                            [&](const auto&, const auto&) { isCalled = true; });
    while (g_main_context_pending(nullptr) == FALSE) std::this_thread::yield();
  }
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  EXPECT_FALSE(isCalled);
}

// If copying began, it would reach the limit and fail for another reason.
TEST_F(CopiedDocument, IsRefusedBeforeItFillsTheDisk) {
  const auto path = write("");
  const auto space = std::filesystem::space(g_get_tmp_dir());
  ASSERT_EQ(truncate(path.c_str(), static_cast<off_t>(space.available)), 0);
  const FileLimit limit;
  const auto result = copyOf(open(path.c_str(), O_RDONLY));
  EXPECT_FALSE(result.isCopied);
  EXPECT_THAT(result.failure, HasSubstr("No space left on device"));
}

bool hasNoReader(int pipe) { return ::write(pipe, "x", 1) < 0 && errno == EPIPE; }

TEST_F(CopiedDocument, OfAnEndlessPipeEndsWithTheObject) {
  std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  bool isCalled = false;
  {
    const DocumentCopy copy(FileDescriptor{ends[0]}, [&](const auto&, const auto&) { isCalled = true; });
    ASSERT_EQ(::write(ends[1], "endless", 7), 7);
  }
  while (!hasNoReader(ends[1])) g_main_context_iteration(nullptr, FALSE);
  EXPECT_FALSE(isCalled);
  close(ends[1]);
}

}  // namespace
}  // namespace tandemtrim::host
