#include "host/cups/saved_defaults.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <functional>
#include <optional>
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

// The files of defaults of a user and of an administrator, in a temporary folder.
class SavedDefaults : public testing::Test {
 protected:
  SavedDefaults() {
    setenv("HOME", folder_.path().c_str(), 1);
    setenv("CUPS_SERVERROOT", (folder_.path() / "etc").c_str(), 1);
  }
  ~SavedDefaults() override {
    setenv("HOME", home_.c_str(), 1);
    root_ ? setenv("CUPS_SERVERROOT", root_->c_str(), 1) : unsetenv("CUPS_SERVERROOT");
  }

  static std::optional<std::string> variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }

  // Reads the defaults with this home folder as a user who has no rights over the files of root.
  static std::array<std::string, 2> defaultsWithHome(const fs::path& home) {
    setenv("HOME", home.c_str(), 1);
    std::array<std::string, 2> texts;
    std::exception_ptr failure;
    std::thread([&] {
      // Only this thread changes its user, unlike with the C library's function.
      if (geteuid() == 0) {
        EXPECT_EQ(syscall(SYS_setresuid, kNobody, kNobody, kNobody), 0);
      }
      errno = EACCES;
      try {
        texts = savedDefaults();
      } catch (const Failure&) {
        failure = std::current_exception();
      }
    }).join();
    if (failure) std::rethrow_exception(failure);
    return texts;
  }

  // A folder with unreadable defaults of the user who reads them, or of root.
  fs::path homeOf(uid_t owner) {
    const auto home = homes_ / "user";
    const auto file = folder_.write(home / ".cups/lpoptions", "kept");
    fs::permissions(file, fs::perms::none);
    fs::permissions(folder_.path(), fs::perms(0711));
    if (geteuid() == 0) {
      EXPECT_EQ(chown(home.c_str(), owner, owner), 0);
    }
    return home;
  }

  static constexpr uid_t kNobody = 65534;
  const std::string home_ = std::getenv("HOME");
  const std::optional<std::string> root_ = variable("CUPS_SERVERROOT");
  test::TemporaryFolder folder_;
  fs::path homes_ = folder_.path() / "homes";
  fs::path own_ = folder_.path() / ".cups/lpoptions";
  Printer printer_ = named("Morva");

  static Printer named(const std::string& name) {
    Printer printer;
    printer.name = name;
    return printer;
  }
};

TEST_F(SavedDefaults, AreTheAdministratorsThenTheUsers) {
  EXPECT_THAT(savedDefaults(), testing::ElementsAre("", ""));
  folder_.write("etc/lpoptions", "for all");
  folder_.write(".cups/lpoptions", "own");
  EXPECT_THAT(savedDefaults(), testing::ElementsAre("for all", "own"));
}

TEST_F(SavedDefaults, OfTheAdministratorAreInTheFolderOfCupsUnlessAVariableNamesAnother) {
  unsetenv("CUPS_SERVERROOT");
  // Without a free descriptor no file can be opened, whether it exists or not.
  struct rlimit limit {};
  getrlimit(RLIMIT_NOFILE, &limit);
  const struct rlimit none { 0, limit.rlim_max };
  setrlimit(RLIMIT_NOFILE, &none);
  const auto failure = failureOf([] { savedDefaults(); });
  setrlimit(RLIMIT_NOFILE, &limit);
  EXPECT_STREQ(failure.what(),
               "/etc/cups/lpoptions cannot be read: Too many open files; nothing was sent. Make "
               "it readable, or move it away");
}

TEST_F(SavedDefaults, ThatAreCompressedAreRefused) {
  for (const char* file : {"etc/lpoptions", ".cups/lpoptions"}) {
    const auto packed = folder_.write(file, "\x1F\x8B packed");
    EXPECT_THAT(failureOf([] { savedDefaults(); }).what(),
                HasSubstr(packed + " cannot be read: it is compressed with gzip; nothing was sent"));
    folder_.write(file, "\x1F\x8A not packed");
  }
  savedDefaults();
}

TEST_F(SavedDefaults, ThatAreNoFileAreRefusedWithoutOpeningThem) {
  refuseOddDefaults();
  folder_.write(".cups/lpoptions", "");
  refuseOddDefaults();
  fs::remove(own_);
  ASSERT_EQ(mkfifo(own_.c_str(), 0600), 0);
  EXPECT_EQ(std::string(failureOf(refuseOddDefaults).what()),
            "your defaults cannot be read, since " + own_.string() +
                " is not a file; nothing was sent. Move it away");
}

TEST_F(SavedDefaults, AreRemovedForOnePrinterAndReturned) {
  folder_.write(".cups/lpoptions", "Dest Morva a=1 b=2\nDest Morva/draft a=3\nDest Morva c=4\n");
  EXPECT_EQ(resetDefaults(printer_), (Options{{"a", "1"}, {"b", "2"}, {"c", "4"}}));
  EXPECT_EQ(textOf(own_), "Dest Morva/draft a=3\n");
  EXPECT_EQ(resetDefaults(printer_), Options{});
  EXPECT_EQ(textOf(own_), "Dest Morva/draft a=3\n");
}

TEST_F(SavedDefaults, ThatCannotBeChangedAreReportedWithTheirPrinter) {
  folder_.write(".cups", "no folder");
  const auto failure = failureOf([&] { resetDefaults(printer_); });
  EXPECT_EQ(failure.trouble(), Trouble::notKeptForAllJobs);
  EXPECT_THAT(failure.what(),
              testing::StartsWith("the defaults for Morva cannot be changed: " + own_.string()));
}

TEST(Defaults, AreAllOptionsButThoseOfASingleJob) {
  EXPECT_EQ(keepable({{"copies", "2"}, {"MVTopMargin", "5"}, {"job-name", "Report"}, {"note", "a b~"}}),
            (Options{{"MVTopMargin", "5"}, {"note", "a b~"}}));
}

TEST(Defaults, ThatTheFileOfCupsCannotHoldAreRefused) {
  for (const char* value : {"", "a#b", "a\tb", "a\nb", "\x1F"}) {
    const auto failure = failureOf([&] { keepable({{"a", "1"}, {"note", value}}); });
    EXPECT_EQ(failure.trouble(), Trouble::notKeptForAllJobs);
    EXPECT_STREQ(failure.what(),
                 "CUPS cannot save the value of note as a default (it must not be empty or very long, or "
                 "contain # or control characters); give another with -o note=...");
  }
}

TEST_F(SavedDefaults, ThatAreUnreadableAreAnErrorUnlessTheyAreInAnotherUsersHomeFolder) {
  const auto own = homeOf(kNobody);
  EXPECT_THAT(
      failureOf([&] { defaultsWithHome(own); }).what(),
      HasSubstr(own.string() + "/.cups/lpoptions cannot be read: Permission denied; nothing was sent"));
  const fs::path ofRoot = geteuid() == 0 ? homeOf(0) : "/proc/1/fd";
  EXPECT_EQ(defaultsWithHome(ofRoot)[1], "");
  const auto ofAll = folder_.write("etc/lpoptions", "");
  fs::permissions(ofAll, fs::perms::none);
  EXPECT_THAT(failureOf([&] { defaultsWithHome(ofRoot); }).what(),
              HasSubstr(ofAll + " cannot be read: Permission denied; nothing was sent"));
}

TEST_F(SavedDefaults, InAnotherUsersHomeFolderCountIfTheyAreReadable) {
  const auto home = homeOf(0);
  folder_.write("etc/lpoptions", "");
  fs::permissions(home / ".cups/lpoptions", fs::perms(0644));
  EXPECT_EQ(defaultsWithHome(home)[1], "kept");
}

TEST_F(SavedDefaults, InAHomeFolderThatCannotBeFoundAreAnError) {
  const auto home = homeOf(kNobody);
  fs::permissions(homes_, fs::perms(0600));
  EXPECT_THAT(failureOf([&] { defaultsWithHome(home); }).what(),
              HasSubstr("Permission denied; nothing was sent"));
  fs::permissions(homes_, fs::perms(0700));
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
