#include "host/preview/limits.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

// The same on all processors except MIPS; the system's headers are older.
constexpr long kFchmodat2 = 452;

// Something that the limited process tries; its parent is the test.
struct Attempt {
  const char* what;
  long (*make)();
};

struct Call {
  const char* name;
  long number;
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
    Attempt{"a signal by a file's owner", [] { return long{fcntl(STDIN_FILENO, F_SETOWN, getppid())}; }},
    // The system ignores the upper half of the number.
    Attempt{"the same in a wider number",
            [] { return syscall(SYS_fcntl, STDIN_FILENO, 1L << 32 | F_SETOWN, getppid()); }},
    Attempt{"a lock",
            [] {
              struct flock lock {};
              lock.l_type = F_RDLCK;
              return long{fcntl(open("/proc/self/exe", O_RDONLY | O_CLOEXEC), F_SETLK, &lock)};
            }},
    Attempt{"limits of another process",
            [] {
              rlimit limit{};
              return long{prlimit(getppid(), RLIMIT_NOFILE, nullptr, &limit)};
            }},
};

constexpr std::array kCalls{
    // Other processes.
    Call{"shutdown", SYS_shutdown},
    Call{"setsockopt", SYS_setsockopt},
    Call{"tkill", SYS_tkill},
    Call{"pidfd_open", SYS_pidfd_open},
    Call{"pidfd_getfd", SYS_pidfd_getfd},
    Call{"pidfd_send_signal", SYS_pidfd_send_signal},
    Call{"ptrace", SYS_ptrace},
    Call{"process_vm_readv", SYS_process_vm_readv},
    Call{"process_vm_writev", SYS_process_vm_writev},
    Call{"process_madvise", SYS_process_madvise},
    Call{"process_mrelease", SYS_process_mrelease},
    Call{"kcmp", SYS_kcmp},
    Call{"setpgid", SYS_setpgid},
    Call{"setsid", SYS_setsid},
    Call{"setpriority", SYS_setpriority},
    Call{"ioprio_set", SYS_ioprio_set},
    Call{"sched_setparam", SYS_sched_setparam},
    Call{"sched_setscheduler", SYS_sched_setscheduler},
    Call{"sched_setaffinity", SYS_sched_setaffinity},
    Call{"sched_setattr", SYS_sched_setattr},
    Call{"migrate_pages", SYS_migrate_pages},
    Call{"move_pages", SYS_move_pages},
    // What processes share.
    Call{"shmget", SYS_shmget},
    Call{"shmat", SYS_shmat},
    Call{"shmctl", SYS_shmctl},
    Call{"semget", SYS_semget},
    Call{"semop", SYS_semop},
    Call{"semtimedop", SYS_semtimedop},
    Call{"semctl", SYS_semctl},
    Call{"msgget", SYS_msgget},
    Call{"msgsnd", SYS_msgsnd},
    Call{"msgrcv", SYS_msgrcv},
    Call{"msgctl", SYS_msgctl},
    Call{"mq_open", SYS_mq_open},
    Call{"mq_unlink", SYS_mq_unlink},
    Call{"mq_timedsend", SYS_mq_timedsend},
    Call{"mq_timedreceive", SYS_mq_timedreceive},
    Call{"mq_notify", SYS_mq_notify},
    Call{"flock", SYS_flock},
    // Files.
    Call{"setxattr", SYS_setxattr},
    Call{"setxattrat", 463},
    Call{"removexattrat", 466},
    Call{"file_setattr", 469},
    // The system.
    Call{"fsopen", SYS_fsopen},
    Call{"fsconfig", SYS_fsconfig},
    Call{"fsmount", SYS_fsmount},
    Call{"fspick", SYS_fspick},
    Call{"move_mount", SYS_move_mount},
    Call{"open_tree", SYS_open_tree},
    Call{"open_tree_attr", 467},
    Call{"mount_setattr", SYS_mount_setattr},
    Call{"fanotify_init", SYS_fanotify_init},
    Call{"fanotify_mark", SYS_fanotify_mark},
    Call{"quotactl", SYS_quotactl},
    Call{"quotactl_fd", SYS_quotactl_fd},
    Call{"sync", SYS_sync},
    Call{"syncfs", SYS_syncfs},
    Call{"swapon", SYS_swapon},
    Call{"reboot", SYS_reboot},
    Call{"swapoff", SYS_swapoff},
    Call{"acct", SYS_acct},
    Call{"syslog", SYS_syslog},
    Call{"init_module", SYS_init_module},
    Call{"finit_module", SYS_finit_module},
    Call{"delete_module", SYS_delete_module},
    Call{"kexec_load", SYS_kexec_load},
    Call{"kexec_file_load", SYS_kexec_file_load},
    Call{"settimeofday", SYS_settimeofday},
    Call{"clock_settime", SYS_clock_settime},
    Call{"adjtimex", SYS_adjtimex},
    Call{"clock_adjtime", SYS_clock_adjtime},
    Call{"sethostname", SYS_sethostname},
    Call{"setdomainname", SYS_setdomainname},
};

// The error of what a limited process tries; its parent is this one.
template <class Attempted>
int errorOf(const Attempted& attempted) {
  const auto process = fork();
  if (process == 0) _exit(limitProcess() ? (attempted() < 0 ? errno : 0) : 255);
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ALimitedProcess, CannotConnectForkWriteSignalLockOrReadLimits) {
  for (const auto& attempt : kAttempts) EXPECT_EQ(errorOf(attempt.make), EPERM) << attempt.what;
}

TEST(ALimitedProcess, CannotReachMemoryThatOthersShare) {
  const int segment = shmget(IPC_PRIVATE, 1, S_IRUSR | S_IWUSR);
  ASSERT_GE(segment, 0);
  EXPECT_EQ(errorOf([&] { return reinterpret_cast<std::intptr_t>(shmat(segment, nullptr, 0)); }), EPERM);
  EXPECT_EQ(errorOf([&] { return shmctl(segment, IPC_RMID, nullptr); }), EPERM);
  EXPECT_EQ(shmctl(segment, IPC_RMID, nullptr), 0);
}

// Without limits, root gets another error from these arguments, or success. To other users, the system itself
// gives EPERM for some of the calls.
TEST(ALimitedProcess, CannotMakeTheseCalls) {
  for (const auto& [name, call] : kCalls) {
    EXPECT_EQ(errorOf([&] { return syscall(call, -1L, -1L, -1L, -1L, -1L, -1L); }), EPERM) << name;
  }
}

}  // namespace
}  // namespace tandemtrim::host
