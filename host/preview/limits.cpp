#include "host/preview/limits.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tandemtrim::host {
namespace {

constexpr std::array kLimits{
#ifndef TANDEM_TRIM_SANITIZED  // sanitizers map terabytes
    std::pair{RLIMIT_AS, rlim_t{512} << 20},
#endif
    std::pair{RLIMIT_CPU, rlim_t{4}},  // seconds
    std::pair{RLIMIT_FSIZE, rlim_t{0}},      std::pair{RLIMIT_NOFILE, rlim_t{32}},
    std::pair{RLIMIT_CORE, rlim_t{0}},
};

// Not in the headers of older systems. New calls have one number on all processors except MIPS, where these
// numbers deny nothing.
constexpr int kFchmodat2 = 452;
constexpr int kSetxattrat = 463;
constexpr int kRemovexattrat = 466;
constexpr int kOpenTreeAttr = 467;
constexpr int kFileSetattr = 469;

// The denied calls. A list of allowed calls would fit only one version of the C library.
constexpr std::array kDenied{
    // The network and other processes.
    SCMP_SYS(socket), SCMP_SYS(socketpair), SCMP_SYS(connect), SCMP_SYS(bind), SCMP_SYS(listen),
    SCMP_SYS(accept), SCMP_SYS(accept4), SCMP_SYS(sendto), SCMP_SYS(sendmsg), SCMP_SYS(sendmmsg),
    SCMP_SYS(shutdown), SCMP_SYS(setsockopt), SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork),
    SCMP_SYS(vfork), SCMP_SYS(clone), SCMP_SYS(clone3), SCMP_SYS(kill), SCMP_SYS(tkill),
    SCMP_SYS(rt_sigqueueinfo), SCMP_SYS(rt_tgsigqueueinfo), SCMP_SYS(pidfd_open), SCMP_SYS(pidfd_getfd),
    SCMP_SYS(pidfd_send_signal), SCMP_SYS(ptrace), SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev),
    SCMP_SYS(process_madvise), SCMP_SYS(process_mrelease), SCMP_SYS(kcmp), SCMP_SYS(setpgid),
    SCMP_SYS(setsid), SCMP_SYS(setpriority), SCMP_SYS(ioprio_set), SCMP_SYS(sched_setparam),
    SCMP_SYS(sched_setscheduler), SCMP_SYS(sched_setaffinity), SCMP_SYS(sched_setattr),
    SCMP_SYS(migrate_pages), SCMP_SYS(move_pages),
    // What processes share: memory, queues, semaphores, locks.
    SCMP_SYS(shmget), SCMP_SYS(shmat), SCMP_SYS(shmctl), SCMP_SYS(msgget), SCMP_SYS(msgsnd), SCMP_SYS(msgrcv),
    SCMP_SYS(msgctl), SCMP_SYS(semget), SCMP_SYS(semop), SCMP_SYS(semtimedop), SCMP_SYS(semctl),
    SCMP_SYS(mq_open), SCMP_SYS(mq_unlink), SCMP_SYS(mq_timedsend), SCMP_SYS(mq_timedreceive),
    SCMP_SYS(mq_notify), SCMP_SYS(flock),
    // Changes of files; opening is limited below.
    SCMP_SYS(creat), SCMP_SYS(openat2), SCMP_SYS(open_by_handle_at), SCMP_SYS(truncate), SCMP_SYS(ftruncate),
    SCMP_SYS(unlink), SCMP_SYS(unlinkat), SCMP_SYS(rename), SCMP_SYS(renameat), SCMP_SYS(renameat2),
    SCMP_SYS(link), SCMP_SYS(linkat), SCMP_SYS(symlink), SCMP_SYS(symlinkat), SCMP_SYS(mkdir),
    SCMP_SYS(mkdirat), SCMP_SYS(rmdir), SCMP_SYS(mknod), SCMP_SYS(mknodat), SCMP_SYS(chmod), SCMP_SYS(fchmod),
    SCMP_SYS(fchmodat), kFchmodat2, SCMP_SYS(chown), SCMP_SYS(fchown), SCMP_SYS(lchown), SCMP_SYS(fchownat),
    SCMP_SYS(utime), SCMP_SYS(utimes), SCMP_SYS(utimensat), SCMP_SYS(futimesat), SCMP_SYS(setxattr),
    SCMP_SYS(lsetxattr), SCMP_SYS(fsetxattr), kSetxattrat, SCMP_SYS(removexattr), SCMP_SYS(lremovexattr),
    SCMP_SYS(fremovexattr), kRemovexattrat, kFileSetattr, SCMP_SYS(memfd_create), SCMP_SYS(ioctl),
    SCMP_SYS(fanotify_init), SCMP_SYS(fanotify_mark), SCMP_SYS(sync), SCMP_SYS(syncfs),
    // The system itself.
    SCMP_SYS(mount), SCMP_SYS(umount2), SCMP_SYS(chroot), SCMP_SYS(pivot_root), SCMP_SYS(fsopen),
    SCMP_SYS(fsconfig), SCMP_SYS(fsmount), SCMP_SYS(fspick), SCMP_SYS(move_mount), SCMP_SYS(open_tree),
    kOpenTreeAttr, SCMP_SYS(mount_setattr), SCMP_SYS(unshare), SCMP_SYS(setns), SCMP_SYS(quotactl),
    SCMP_SYS(quotactl_fd), SCMP_SYS(swapon), SCMP_SYS(swapoff), SCMP_SYS(acct), SCMP_SYS(syslog),
    SCMP_SYS(vhangup), SCMP_SYS(reboot), SCMP_SYS(kexec_load), SCMP_SYS(kexec_file_load),
    SCMP_SYS(init_module), SCMP_SYS(finit_module), SCMP_SYS(delete_module), SCMP_SYS(iopl), SCMP_SYS(ioperm),
    SCMP_SYS(settimeofday), SCMP_SYS(clock_settime), SCMP_SYS(adjtimex), SCMP_SYS(clock_adjtime),
    SCMP_SYS(sethostname), SCMP_SYS(setdomainname), SCMP_SYS(bpf), SCMP_SYS(perf_event_open),
    SCMP_SYS(userfaultfd), SCMP_SYS(keyctl), SCMP_SYS(add_key), SCMP_SYS(request_key),
    SCMP_SYS(io_uring_setup), SCMP_SYS(prctl)};

// The calls that open a file, and the index of their argument with the flags.
constexpr std::array kOpening{std::pair{SCMP_SYS(open), 1U}, std::pair{SCMP_SYS(openat), 2U}};
constexpr std::array kWriting{O_WRONLY, O_RDWR, O_CREAT, O_TRUNC};

// The operations of fcntl that lock a file or have the system signal another process.
constexpr std::array kDeniedOnFiles{F_SETLK,  F_SETLKW,    F_OFD_SETLK, F_OFD_SETLKW,
                                    F_SETOWN, F_SETOWN_EX, F_SETSIG,    F_SETLEASE};
// The system reads only this part of an operation's number.
constexpr scmp_datum_t kOperation = 0xFFFFFFFF;

bool denyCalls() {
  const std::unique_ptr<void, decltype(&seccomp_release)> filter(seccomp_init(SCMP_ACT_ALLOW),
                                                                 seccomp_release);
  constexpr auto kRefused = SCMP_ACT_ERRNO(EPERM);
  if (!filter) return false;
  for (const int call : kDenied) {
    if (seccomp_rule_add(filter.get(), kRefused, call, 0) != 0) return false;
  }
  for (const auto& [call, place] : kOpening) {
    for (const auto flag : kWriting) {
      const auto bits = static_cast<scmp_datum_t>(flag);
      const scmp_arg_cmp isSet{place, SCMP_CMP_MASKED_EQ, bits, bits};
      if (seccomp_rule_add_array(filter.get(), kRefused, call, 1, &isSet) != 0) return false;
    }
  }
  for (const auto operation : kDeniedOnFiles) {
    const scmp_arg_cmp isDenied{1, SCMP_CMP_MASKED_EQ, kOperation, static_cast<scmp_datum_t>(operation)};
    if (seccomp_rule_add_array(filter.get(), kRefused, SCMP_SYS(fcntl), 1, &isDenied) != 0) return false;
  }
  // The C library itself makes these calls with this process as the first argument, so they are denied only
  // for other processes.
  const std::array allowedOnSelf{std::pair{SCMP_SYS(tgkill), static_cast<scmp_datum_t>(getpid())},
                                 std::pair{SCMP_SYS(prlimit64), scmp_datum_t{0}}};
  for (const auto& [call, self] : allowedOnSelf) {
    const scmp_arg_cmp isAnother{0, SCMP_CMP_NE, self, 0};
    if (seccomp_rule_add_array(filter.get(), kRefused, call, 1, &isAnother) != 0) return false;
  }
  return seccomp_load(filter.get()) == 0;
}

}  // namespace

bool limitProcess() {
  if (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
  if (close_range(STDERR_FILENO + 1, ~0U, 0) != 0) return false;
  for (const auto& [resource, most] : kLimits) {
    const rlimit limit{most, most};
    if (setrlimit(resource, &limit) != 0) return false;
  }
  return denyCalls();
}

}  // namespace tandemtrim::host
