#include "host/whole_file.hpp"

#include <cerrno>
#include <vector>

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/host/failure_matcher.hpp"
#include "tests/support/temporary_folder.hpp"

namespace {

// The error with which this thread's locking fails, or 0.
thread_local int failureOfLocking = 0;

}  // namespace

// Replaces the system's.
extern "C" int flock(int file, int operation) noexcept {
  errno = failureOfLocking;
  return failureOfLocking != 0 ? -1 : static_cast<int>(syscall(SYS_flock, file, operation));
}

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::HasSubstr;

TEST(AFile, IsReadOnlyUpToTheAllowedLength) {
  const test::TemporaryFolder folder;
  const auto file = folder.write("file", std::string(5000, 'x'));
  EXPECT_EQ(readWholeFile(file, 5000), std::string(5000, 'x'));
  EXPECT_THAT(failureOf([&] { readWholeFile(file, 4999); }).what(), HasSubstr("more than 4999 bytes"));
  for (const char* missing : {"missing", "missing/too", "file/below"})
    EXPECT_EQ(readWholeFile(folder.path() / missing, 1), std::nullopt) << missing;
}

TEST(APipe, IsRefusedWithoutWaitingForItsWriter) {
  const test::TemporaryFolder folder;
  const auto pipe = folder.path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(std::string(failureOf([&] { readWholeFile(pipe); }).what()),
            pipe.string() + " cannot be read: it is not a regular file");
}

// Reading this file fails, as no process has memory at address 0.
TEST(AFile, ThatCannotBeReadIsNamed) {
  EXPECT_THAT(failureOf([] { readWholeFile("/proc/self/mem", 1 << 20); }).what(),
              HasSubstr("/proc/self/mem cannot be read"));
}

TEST(AFile, ThatCannotBeReplacedIsNamedAndNothingIsLeftBehind) {
  const test::TemporaryFolder folder;
  const auto there = folder.path() / "there";
  std::filesystem::create_directory(there);
  for (const auto& file : {there, folder.path() / "missing/file"})
    EXPECT_THAT(failureOf([&] { replaceFile(file, "text"); }).what(),
                HasSubstr(file.string() + " cannot be written"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

// The last of the user's groups, or for root any.
gid_t anotherGroup() {
  if (geteuid() == 0) return 54321;
  std::vector<gid_t> groups(static_cast<std::size_t>(getgroups(0, nullptr)));
  if (groups.empty() || getgroups(static_cast<int>(groups.size()), groups.data()) < 0) return getegid();
  return groups.back();
}

TEST(AFile, KeepsItsModeAndGroupWhenItIsReplaced) {
  const test::TemporaryFolder folder;
  const auto file = folder.write("file", "old");
  ASSERT_EQ(chown(file.c_str(), geteuid(), anotherGroup()), 0);
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  replaceFile(file, "new");
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(readWholeFile(file), "new");
  EXPECT_EQ(status.st_gid, anotherGroup());
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(AFilesLock, IsForItsUserAlone) {
  const test::TemporaryFolder folder;
  const auto lock = lockFile(folder.path() / "file");
  EXPECT_EQ(std::filesystem::status(folder.path() / "file.lock").permissions(), std::filesystem::perms(0600));
}

TEST(AFilesLock, IsNotTakenWhereALinkLeads) {
  const test::TemporaryFolder folder;
  std::filesystem::create_symlink(folder.path() / "elsewhere", folder.path() / "file.lock");
  EXPECT_THAT(failureOf([&] { lockFile(folder.path() / "file"); }).what(),
              HasSubstr("file cannot be written: Too many levels of symbolic links"));
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "elsewhere"));
}

TEST(AFilesLock, ThatTheSystemCannotSetIsReportedAtOnce) {
  const test::TemporaryFolder folder;
  failureOfLocking = ENOLCK;
  const auto failure = failureOf([&] { lockFile(folder.path() / "file"); });
  failureOfLocking = 0;
  EXPECT_THAT(failure.what(), HasSubstr("file cannot be written: No locks available"));
}

}  // namespace
}  // namespace tandemtrim::host
