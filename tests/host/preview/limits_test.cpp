#include "host/preview/limits.hpp"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

// The same on all processors; the system's headers are older.
constexpr long kFchmodat2 = 452;

// Something that the limited process tries; its parent is the test.
struct Attempt {
  const char* what;
  long (*make)();
};

constexpr std::array kAttempts{
    Attempt{"a connection", [] { return long{socket(AF_INET, SOCK_STREAM, 0)}; }},
    Attempt{"another process", [] { return long{fork()}; }},
    Attempt{"a file to write", [] { return long{open("/dev/null", O_WRONLY | O_CLOEXEC)}; }},
    Attempt{"a file to empty", [] { return long{open("/dev/null", O_RDONLY | O_TRUNC | O_CLOEXEC)}; }},
    Attempt{"a file's mode", [] { return syscall(kFchmodat2, AT_FDCWD, "/dev/null", 0666, 0); }},
    Attempt{"a signal", [] { return long{kill(getppid(), 0)}; }},
    Attempt{"a signal to a thread", [] { return syscall(SYS_tgkill, getppid(), getppid(), 0); }},
    Attempt{"a signal with a value",
            [] {
              siginfo_t value{};
              value.si_code = SI_QUEUE;
              return syscall(SYS_rt_sigqueueinfo, getppid(), 0, &value);
            }},
    Attempt{"a signal with a value to a thread",
            [] {
              siginfo_t value{};
              value.si_code = SI_QUEUE;
              return syscall(SYS_rt_tgsigqueueinfo, getppid(), getppid(), 0, &value);
            }},
    Attempt{"limits of another process",
            [] {
              rlimit limit{};
              return long{prlimit(getppid(), RLIMIT_NOFILE, nullptr, &limit)};
            }},
};

TEST(ALimitedProcess, CannotConnectForkWriteSignalOrReadLimits) {
  for (const auto& attempt : kAttempts) {
    const auto process = fork();
    if (process == 0) _exit(limitProcess() ? (attempt.make() < 0 ? errno : 0) : 255);
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    ASSERT_TRUE(WIFEXITED(status)) << attempt.what;
    EXPECT_EQ(WEXITSTATUS(status), EPERM) << attempt.what;
  }
}

}  // namespace
}  // namespace tandemtrim::host
