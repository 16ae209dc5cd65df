#include "host/cups/saved_defaults.hpp"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/file_descriptor.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/support/temporary_folder.hpp"

namespace {

// Called when this thread flushes a file to the disk; the error of flushing, or 0 if it succeeds.
thread_local std::function<void(int)> onFlushing = [](int) {};
thread_local int flushingError = 0;

}  // namespace

// Replaces the C library's.
extern "C" int fsync(int file) {
  onFlushing(file);
  errno = flushingError;
  if (flushingError != 0) return -1;
  return static_cast<int>(syscall(SYS_fsync, file));
}

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using test::failureOf;
using testing::HasSubstr;

std::string textOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

mode_t modeOf(const fs::path& file) {
  struct stat status {};
  EXPECT_EQ(stat(file.c_str(), &status), 0);
  return status.st_mode & 07777;
}

std::string withX(const std::string& text) { return text + "x"; }

TEST(TheNameOfTheFileOfDefaults, IsTheOneThatLibcupsUses) {
  const std::string home = std::getenv("HOME");
  for (const char* folder : {"/home/user", "", "relative"}) {
    setenv("HOME", folder, 1);
    EXPECT_EQ(savedDefaultsFile(), std::string(folder) + "/.cups/lpoptions");
  }
  setenv("HOME", home.c_str(), 1);
}

TEST(APrinter, IsNamedTogetherWithItsInstance) {
  Printer printer;
  printer.name = "Morva";
  EXPECT_EQ(nameWithInstance(printer), "Morva");
  printer.instance = "draft";
  EXPECT_EQ(nameWithInstance(printer), "Morva/draft");
}

class TheFileOfDefaults : public testing::Test {
 protected:
  test::TemporaryFolder folder_;
  fs::path file_ = folder_.path() / ".cups/lpoptions";
};

TEST_F(TheFileOfDefaults, LosesNoEditOfSimultaneousWriters) {
  constexpr int kRounds = 200;
  constexpr std::size_t kWriters = 3;
  std::vector<std::thread> writers;
  for (std::size_t i = 0; i < kWriters; ++i) {
    writers.emplace_back([this] {
      for (int round = 0; round < kRounds; ++round) editFile(file_, withX);
    });
  }
  for (auto& writer : writers) writer.join();
  EXPECT_EQ(textOf(file_), std::string(kRounds * kWriters, 'x'));
}

TEST_F(TheFileOfDefaults, IsNotChangedWhileAnotherProgramKeepsItLocked) {
  folder_.write(".cups/lpoptions", "before");
  const auto lock = folder_.write(".cups/lpoptions.lock", "");
  const FileDescriptor lockHolder(open(lock.c_str(), O_RDWR | O_CLOEXEC));
  ASSERT_EQ(flock(lockHolder.get(), LOCK_EX), 0);
  const auto failure = failureOf([&] { editFile(file_, withX, std::chrono::milliseconds(20)); });
  EXPECT_THAT(failure.what(), HasSubstr("lpoptions.lock is locked by another program"));
  EXPECT_EQ(textOf(file_), "before");
}

TEST_F(TheFileOfDefaults, IsMadeInAFolderThatOnlyTheUserCanOpen) {
  editFile(file_, withX);
  EXPECT_EQ(modeOf(file_), 0644U);
  EXPECT_EQ(modeOf(file_.parent_path()), 0700U);
}

TEST_F(TheFileOfDefaults, KeepsItsMode) {
  folder_.write(".cups/lpoptions", "");
  fs::permissions(file_, fs::perms(0640));
  editFile(file_, withX);
  EXPECT_EQ(modeOf(file_), 0640U);
}

TEST_F(TheFileOfDefaults, KeepsItsOwnerAndGroup) {
  folder_.write(".cups/lpoptions", "");
  const bool isRoot = geteuid() == 0;
  const uid_t owner = isRoot ? 54321 : geteuid();
  const gid_t group = isRoot ? 54322 : getegid();
  ASSERT_EQ(chown(file_.c_str(), owner, group), 0);
  editFile(file_, withX);
  struct stat status {};
  ASSERT_EQ(stat(file_.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, owner);
  EXPECT_EQ(status.st_gid, group);
}

TEST_F(TheFileOfDefaults, IsNotMadeIfNothingChanges) {
  editFile(file_, [](const std::string& text) { return text; });
  EXPECT_FALSE(fs::exists(file_));
}

TEST_F(TheFileOfDefaults, IsUnchangedIfThereIsNoRoom) {
  folder_.write(".cups/lpoptions", "before");
  struct rlimit limit {};
  getrlimit(RLIMIT_FSIZE, &limit);
  const struct rlimit small { 3, limit.rlim_max };
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const auto failure = failureOf([&] { editFile(file_, withX); });
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, handler);
  EXPECT_THAT(failure.what(), HasSubstr("lpoptions cannot be written"));
  EXPECT_EQ(textOf(file_), "before");
  for (const auto& entry : fs::directory_iterator(file_.parent_path()))
    EXPECT_THAT(entry.path().filename(), testing::AnyOf("lpoptions", "lpoptions.lock"));
}

TEST_F(TheFileOfDefaults, IsOnTheDiskBeforeItReplacesTheOldOne) {
  folder_.write(".cups/lpoptions", "before");
  struct stat flushed {};
  std::string textThen;
  onFlushing = [&](int file) {
    EXPECT_EQ(fstat(file, &flushed), 0);
    textThen = textOf(file_);
  };
  editFile(file_, withX);
  onFlushing = [](int) {};
  struct stat status {};
  ASSERT_EQ(stat(file_.c_str(), &status), 0);
  EXPECT_EQ(textThen, "before");
  EXPECT_EQ(flushed.st_ino, status.st_ino);
  EXPECT_EQ(flushed.st_size, 7);
}

TEST_F(TheFileOfDefaults, IsUnchangedIfFlushingFails) {
  folder_.write(".cups/lpoptions", "before");
  flushingError = EIO;
  const auto failure = failureOf([&] { editFile(file_, withX); });
  flushingError = 0;
  EXPECT_THAT(failure.what(), HasSubstr(file_.string() + " cannot be written: Input/output error"));
  EXPECT_EQ(textOf(file_), "before");
}

TEST_F(TheFileOfDefaults, IsReportedIfItIsALinkToItself) {
  fs::create_directory(file_.parent_path());
  fs::create_symlink("lpoptions", file_);
  const auto failure = failureOf([&] { editFile(file_, withX); });
  EXPECT_THAT(failure.what(),
              HasSubstr(file_.string() + " cannot be read: Too many levels of symbolic links"));
  EXPECT_TRUE(fs::is_symlink(file_));
}

TEST_F(TheFileOfDefaults, IsEditedAtTheTargetOfALink) {
  const auto target = folder_.write("kept/elsewhere", "a");
  fs::create_directory(file_.parent_path());
  fs::create_symlink(target, file_);
  editFile(file_, withX);
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_EQ(textOf(target), "ax");
}

TEST_F(TheFileOfDefaults, IsReplacedAsAWhole) {
  folder_.write(".cups/lpoptions", "before");
  std::ifstream reader(file_);
  editFile(file_, [](const std::string&) { return "after"; });
  std::string text;
  reader >> text;
  EXPECT_EQ(text, "before");
  EXPECT_EQ(textOf(file_), "after");
}

TEST_F(TheFileOfDefaults, IsReportedWhenItCannotBeChanged) {
  folder_.write(".cups", "no folder");
  EXPECT_THAT(failureOf([&] { editFile(file_, withX); }).what(), HasSubstr("lpoptions cannot be "));
}

TEST_F(TheFileOfDefaults, IsUnchangedIfAnEditFails) {
  folder_.write(".cups/lpoptions", "before");
  failureOf([&] { editFile(file_, [](const std::string&) -> std::string { throw Failure("no"); }); });
  EXPECT_EQ(textOf(file_), "before");
  editFile(file_, withX);
  EXPECT_EQ(textOf(file_), "beforex");
}

}  // namespace
}  // namespace tandemtrim::host
