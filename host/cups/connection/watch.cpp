#include "host/cups/connection/watch.hpp"

#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include "host/cups/connection/block_signals.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::chrono::milliseconds kWatchInterval{20};
constexpr long kMemoryForAnswers = 128L * 1024;

// How many questions the user has not answered yet.
std::atomic<int> questions = 0;

// The peak memory of this process, in kilobytes.
long memoryTaken() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace

int bytesOnTheWay(http_t* http) {
  int waiting = 0;  // stays 0 when the connection is gone
  ioctl(httpGetFd(http), SIOCOUTQ, &waiting);
  return waiting;
}

WaitForUser::WaitForUser() { ++questions; }

WaitForUser::~WaitForUser() { --questions; }

Bounds::Bounds(std::chrono::seconds ofEach) : longest(ofEach) { renew(); }

void Bounds::renew() {
  mostMemory = memoryTaken() + kMemoryForAnswers;
  givenUp = GivenUp::no;
}

// A thread, because libcups calls no callback while bytes keep coming or while it repeats a request, and
// gives up a full connection that still takes bytes. It cuts the connection repeatedly until the request has
// ended, since libcups may reconnect in between. It measures memory instead of counting bytes, since an
// answer may be compressed.
Watch::Watch(http_t* http, Bounds& bounds, Patience patience)
    : thread_([this, http, &bounds, patience](const std::stop_token& stop) {
        enforceBounds(http, bounds, patience, stop);
      }) {}

void Watch::enforceBounds(http_t* http, Bounds& bounds, Patience patience, const std::stop_token& stop) {
  blockSignals();
  int left = 0;
  auto deadline = std::chrono::steady_clock::now() + bounds.longest;
  std::unique_lock lock(mutex_);
  while (!ended_.wait_for(lock, stop, kWatchInterval, [&] { return stop.stop_requested(); })) {
    if (memoryTaken() > bounds.mostMemory) bounds.givenUp = GivenUp::tooLarge;
    const auto now = std::chrono::steady_clock::now();
    const int waiting = bytesOnTheWay(http);
    const bool areLeaving = patience == Patience::whileBytesLeave && waiting != left;
    if (questions > 0 || areLeaving) deadline = now + bounds.longest;
    left = waiting;
    const bool isLate = now > deadline;
    if (isLate && bounds.givenUp == GivenUp::no) bounds.givenUp = GivenUp::tooSlow;
    if (bounds.givenUp != GivenUp::no) shutdown(httpGetFd(http), SHUT_RDWR);
  }
}

}  // namespace tandemtrim::host
