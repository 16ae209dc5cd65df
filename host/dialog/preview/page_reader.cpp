#include "host/dialog/preview/page_reader.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstring>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

#include "host/failure.hpp"
#include "host/preview/page_answer.hpp"

namespace tandemtrim::host {
namespace {

using Clock = std::chrono::steady_clock;

// How often `isWanted` is called.
constexpr std::chrono::milliseconds kBetweenQuestions{50};
constexpr std::uint32_t kMostPages = std::numeric_limits<int>::max();
constexpr std::array<std::pair<PageStatus, const char*>, 3> kReasons{
    {{PageStatus::notStarted, "the program that renders pages could not start"},
     {PageStatus::broken, "it is not a PDF document that can be read"},
     {PageStatus::locked, "it needs a password"}}};

Failure noPage(const std::string& reason) { return Failure("the document's page is not shown: " + reason); }

bool isLength(double length) { return std::isfinite(length) && length > 0; }

// The empty edges; nullopt if they are negative or larger than the page.
std::optional<Edges> emptyEdges(const PageAnswer& answer) {
  const Edges edges{answer.emptyTop, answer.emptyBottom, answer.emptyLeft, answer.emptyRight};
  const bool isOnPage = edges.top >= 0 && edges.bottom >= 0 && edges.left >= 0 && edges.right >= 0 &&
                        edges.top + edges.bottom <= answer.pageHeight &&
                        edges.left + edges.right <= answer.pageWidth;
  return isOnPage ? std::optional(edges) : std::nullopt;
}

// The running program. The destructor ends it.
class Renderer {
 public:
  Renderer(const FileDescriptor& document, const PageRequest& request) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) throw noPage(std::strerror(errno));
    answer_ = FileDescriptor(pipe[0]);
    const FileDescriptor end(pipe[1]);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, document.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, end.get(), STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t noSignals;
    sigemptyset(&noSignals);
    posix_spawnattr_setsigmask(&attributes, &noSignals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::array<std::string, 3> words{request.program, std::to_string(request.page),
                                     std::to_string(request.longestSide)};
    const std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    const int error =
        posix_spawn(&process_, words[0].c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) throw noPage(request.program + " cannot be run: " + std::strerror(error));
  }
  Renderer(const Renderer&) = delete;
  Renderer& operator=(const Renderer&) = delete;
  ~Renderer() { end(); }

  // Reads its answer. Stops one byte after `most`, since such an answer is wrong.
  std::vector<std::byte> read(std::size_t most, const PageRequest& request) {
    const auto deadline = Clock::now() + request.limit;
    std::vector<std::byte> answer(most + 1);
    std::size_t filled = 0;
    while (filled < answer.size()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
      if (left.count() <= 0) throw noPage("its rendering takes too long");
      if (!request.isWanted()) throw noPage("it is no longer needed");
      pollfd readable{answer_.get(), POLLIN, 0};
      if (poll(&readable, 1, static_cast<int>(std::min(left, kBetweenQuestions).count())) <= 0) continue;
      const auto got = ::read(answer_.get(), &answer[filled], answer.size() - filled);
      if (got < 0 && errno != EINTR) throw noPage(std::strerror(errno));
      if (got == 0) break;
      if (got > 0) filled += static_cast<std::size_t>(got);
    }
    answer.resize(filled);
    return answer;
  }

  // Ends it; returns its exit status, or the signal that ended it as a negative number.
  int end() {
    if (const auto process = std::exchange(process_, -1); process > 0) {
      // A program that has ended already keeps its status.
      kill(process, SIGKILL);
      int status = 0;
      while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
      }
      status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    return status_;
  }

 private:
  FileDescriptor answer_{-1};
  pid_t process_ = -1;
  int status_ = 0;
};

std::string reasonOf(int status) {
  for (const auto& [known, reason] : kReasons) {
    if (status == static_cast<int>(known)) return reason;
  }
  return status < 0 ? std::string("its rendering was stopped: ") + strsignal(-status)
                    : "the renderer returned no page";
}

}  // namespace

std::optional<RenderedPage> pageIn(std::span<const std::byte> answer, int longestSide) {
  PageAnswer head;
  if (answer.size() < sizeof head) return std::nullopt;
  std::memcpy(&head, answer.data(), sizeof head);
  const auto pixels = answer.subspan(sizeof head);
  const auto most = static_cast<std::uint32_t>(longestSide);
  const bool isPage = head.mark == PageAnswer::kMark && head.pages > 0 && head.pages <= kMostPages &&
                      head.width > 0 && head.width <= most && head.height > 0 && head.height <= most &&
                      isLength(head.pageWidth) && isLength(head.pageHeight) && isLength(head.longest) &&
                      isLength(head.broadest) &&
                      pixels.size() == std::size_t{head.width} * head.height * sizeof(std::uint32_t);
  if (!isPage) return std::nullopt;
  RenderedPage page{static_cast<int>(head.pages),
                    head.pageWidth,
                    head.pageHeight,
                    emptyEdges(head),
                    head.longest,
                    head.broadest,
                    static_cast<int>(head.width),
                    static_cast<int>(head.height),
                    {}};
  page.pixels.resize(pixels.size() / sizeof(std::uint32_t));
  std::memcpy(page.pixels.data(), pixels.data(), pixels.size());
  return page;
}

std::optional<RenderedPage> readPage(FileDescriptor document, const PageRequest& request) {
  if (!document.isOpen()) throw noPage("it can be read only once");
  const auto side = static_cast<std::size_t>(request.longestSide);
  Renderer renderer(document, request);
  const auto answer = renderer.read(sizeof(PageAnswer) + side * side * sizeof(std::uint32_t), request);
  const auto status = renderer.end();
  if (answer.empty() && status == static_cast<int>(PageStatus::noSuchPage)) return std::nullopt;
  if (answer.empty()) throw noPage(reasonOf(status));
  auto page = pageIn(answer, request.longestSide);
  if (!page) throw noPage("the renderer returned no page");
  return page;
}

}  // namespace tandemtrim::host
