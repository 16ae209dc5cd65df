#include "host/applications/command.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/file_descriptor.hpp"

namespace tandemtrim::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostSaid = 1 << 16;

// Starts the process in a separate process group; returns -1, with the reason in errno, when that fails.
pid_t start(const std::vector<std::string>& words, int output) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  pid_t process = -1;
  const int error =
      posix_spawnp(&process, arguments.front(), &actions, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  errno = error;
  return error == 0 ? process : -1;
}

// Appends what can be read now; returns whether to read on.
bool readFrom(const FileDescriptor& output, std::string& said) {
  std::array<char, 4096> piece{};
  const auto length = read(output.get(), piece.data(), piece.size());
  if (length <= 0) return false;
  said.append(piece.data(), std::min(static_cast<std::size_t>(length), kMostSaid - said.size()));
  return said.size() < kMostSaid;
}

// Reads until the process ends; returns whether it does so in time.
bool follow(const FileDescriptor& output, const FileDescriptor& process, Clock::time_point end,
            std::string& said) {
  std::array<pollfd, 2> watched{pollfd{output.get(), POLLIN, 0}, pollfd{process.get(), POLLIN, 0}};
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0) return false;
    // A signal may interrupt the wait.
    if (poll(watched.data(), watched.size(), static_cast<int>(left.count())) < 0) continue;
    const auto [saysMore, hasEnded] = std::pair{watched[0].revents != 0, watched[1].revents != 0};
    if (saysMore && !readFrom(output, said)) watched[0].fd = -1;
    if (hasEnded && !saysMore) return true;
  }
}

}  // namespace

CommandResult runCommand(const std::vector<std::string>& words, std::chrono::milliseconds longest) {
  CommandResult result;
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return result;
  const FileDescriptor output(ends[0]);
  FileDescriptor input(ends[1]);
  fcntl(output.get(), F_SETFL, O_NONBLOCK);
  const auto child = start(words, input.get());
  result.isInstalled = child >= 0 || errno != ENOENT;
  if (child < 0) return result;
  input = FileDescriptor(-1);
  const FileDescriptor process(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
  result.inTime = follow(output, process, Clock::now() + longest, result.said);
  if (!result.inTime) kill(-child, SIGKILL);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  result.succeeded = result.inTime && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return result;
}

}  // namespace tandemtrim::host
