// Preloaded before the C library: makes one call of the program fail, and counts the calls of each kind.
// TANDEM_TRIM_FAILING="KIND NUMBER ERRNO": call number NUMBER of a kind (in kCalls, or "malloc") fails with
// ERRNO. TANDEM_TRIM_CALLS=FILE: the counts are written there when the program ends, a line "KIND COUNT"
// each. A crash prints a backtrace; with TANDEM_TRIM_WHERE, so does the failing call. System calls are caught
// by the kernel, since libraries make many of them without a replaceable function.

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <execinfo.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#define EXPORTED extern "C" [[gnu::visibility("default")]]

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* old, std::size_t size);

namespace {

struct Call {
  long number;
  std::string_view kind;
};

constexpr std::array kCalls{
    Call{SYS_openat, "open"},      Call{SYS_read, "read"},           Call{SYS_pread64, "read"},
    Call{SYS_recvfrom, "read"},    Call{SYS_recvmsg, "read"},        Call{SYS_write, "write"},
    Call{SYS_writev, "write"},     Call{SYS_sendto, "write"},        Call{SYS_sendmsg, "write"},
    Call{SYS_renameat2, "rename"}, Call{SYS_fsync, "fsync"},         Call{SYS_connect, "connect"},
    Call{SYS_mmap, "mmap"},        Call{SYS_socket, "socket"},       Call{SYS_fchmod, "fchmod"},
    Call{SYS_flock, "flock"},      Call{SYS_getdents64, "getdents"}, Call{SYS_newfstatat, "stat"},
    Call{SYS_unlinkat, "unlink"},  Call{SYS_mkdirat, "mkdir"},
#ifdef SYS_open
    Call{SYS_open, "open"},        Call{SYS_rename, "rename"},       Call{SYS_unlink, "unlink"},
    Call{SYS_mkdir, "mkdir"},
#endif
};
constexpr std::array kNeverBlocked{SIGSYS, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
constexpr std::string_view kAllocation = "malloc";
constexpr int kWidth = 64;  // at least the bytes of the C library's syscall(), whose calls are not caught

// The registers of a system call's arguments and of its result.
constexpr std::array<int, 6> kArguments{REG_RDI, REG_RSI, REG_RDX, REG_R10, REG_R8, REG_R9};
constexpr int kResult = REG_RAX;

std::array<std::atomic<unsigned long>, kCalls.size()> counts{};
std::atomic<unsigned long> allocations = 0;
std::atomic<bool> isBegun = false;

struct Failing {
  std::array<char, 16> kind{};
  unsigned long number = 0;
  int error = 0;
} failing;

std::size_t indexOf(std::string_view kind) {
  std::size_t index = 0;
  while (kCalls[index].kind != kind) ++index;
  return index;
}

void writeFunctions() {
  std::array<void*, 64> frames{};
  backtrace_symbols_fd(frames.data(), backtrace(frames.data(), frames.size()), STDERR_FILENO);
}

// Counts a call. Returns whether it is the one that must fail.
bool fails(std::string_view kind, std::atomic<unsigned long>& count) {
  if (++count != failing.number || kind != failing.kind.data()) return false;
  if (getenv("TANDEM_TRIM_WHERE") != nullptr) writeFunctions();
  return true;
}

void onCall(int /*signal*/, siginfo_t* information, void* context) {
  const int before = errno;
  auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
  const auto argument = [&](std::size_t index) { return registers[kArguments[index]]; };
  const auto* call = kCalls.data();
  while (call->number != information->si_syscall) ++call;
  if (fails(call->kind, counts[indexOf(call->kind)])) {
    registers[kResult] = -failing.error;
  } else {
    const long result =
        syscall(call->number, argument(0), argument(1), argument(2), argument(3), argument(4), argument(5));
    registers[kResult] = result == -1 ? -errno : result;
  }
  errno = before;
}

void onCrash(int signal) {
  dprintf(STDERR_FILENO, "CRASH %d\n", signal);
  writeFunctions();
  _exit(128 + signal);
}

void handle(int signal, void (*onSignal)(int, siginfo_t*, void*)) {
  struct sigaction action {};
  action.sa_sigaction = onSignal;
  action.sa_flags = SA_SIGINFO | SA_NODEFER | SA_RESTART;
  sigaction(signal, &action, nullptr);
}

// Makes system calls of these kinds raise SIGSYS, except those by syscall(), which this library uses itself.
void catchCalls() {
  const auto passing = reinterpret_cast<std::uintptr_t>(&syscall);
  constexpr auto kInstruction = offsetof(seccomp_data, instruction_pointer);
  const auto low = static_cast<std::uint32_t>(passing);
  std::array<sock_filter, 2 * kCalls.size() + 8> filter{};
  std::size_t size = 0;
  const auto add = [&](sock_filter step) { filter[size++] = step; };
  add(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kInstruction + 4));
  add(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(passing >> 32U), 0, 4));
  add(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kInstruction));
  add(BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, low, 0, 2));
  add(BPF_JUMP(BPF_JMP | BPF_JGT | BPF_K, low + kWidth, 1, 0));
  add(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  add(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
  for (const auto& call : kCalls) {
    add(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call.number), 0, 1));
    add(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP));
  }
  add(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog program{static_cast<unsigned short>(size), filter.data()};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) abort();
}

[[gnu::constructor]] void begin() {
  std::array<void*, 1> frame{};
  backtrace(frame.data(), frame.size());  // loads its library now
  const char* const text = getenv("TANDEM_TRIM_FAILING");
  if (text != nullptr) sscanf(text, "%15s %lu %d", failing.kind.data(), &failing.number, &failing.error);
  for (const int signal : kNeverBlocked)
    handle(
        signal, signal == SIGSYS ? onCall : [](int crash, siginfo_t*, void*) { onCrash(crash); });
  if (kAllocation != failing.kind.data()) catchCalls();
  isBegun = true;
}

[[gnu::destructor]] void end() {
  isBegun = false;
  failing.number = 0;
  const char* const name = getenv("TANDEM_TRIM_CALLS");
  std::FILE* const file = name == nullptr ? nullptr : fopen(name, "w");
  if (file == nullptr) return;
  for (std::size_t index = 0; index < kCalls.size(); ++index) {
    if (counts[index] > 0) fprintf(file, "%s %lu\n", kCalls[index].kind.data(), counts[index].load());
  }
  fprintf(file, "%s %lu\n", kAllocation.data(), allocations.load());
  fclose(file);
}

bool allocationFails() {
  if (!isBegun || !fails(kAllocation, allocations)) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

EXPORTED void* malloc(std::size_t size) { return allocationFails() ? nullptr : __libc_malloc(size); }
EXPORTED void* calloc(std::size_t count, std::size_t size) {
  return allocationFails() ? nullptr : __libc_calloc(count, size);
}
EXPORTED void* realloc(void* old, std::size_t size) {
  return allocationFails() ? nullptr : __libc_realloc(old, size);
}

// Keeps SIGSYS and the signals of a crash unblocked: while blocked, they end the program without calling the
// handler.
EXPORTED int pthread_sigmask(int how, const sigset_t* signals, sigset_t* before) {
  sigset_t others;
  if (signals != nullptr) {
    others = *signals;
    for (const int signal : kNeverBlocked) sigdelset(&others, signal);
  }
  return sigprocmask(how, signals == nullptr ? nullptr : &others, before) == 0 ? 0 : errno;
}
