#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

#include <cups/cups.h>

namespace tandemtrim::host {

/// Why a request was given up.
enum class GivenUp { no, tooSlow, tooLarge };

/// The limits of time and memory for the requests over a connection.
class Bounds {
 public:
  /// Each request may take the time `ofEach`. All requests together may add a fixed amount to the program's
  /// peak memory.
  explicit Bounds(std::chrono::seconds ofEach);

  /// Starts anew, for a new connection.
  void renew();

  const std::chrono::seconds longest;
  /// In kilobytes, of the whole program.
  long mostMemory = 0;
  /// Set when a request exceeds a limit.
  std::atomic<GivenUp> givenUp = GivenUp::no;
};

/// How many of the written bytes the server has not taken yet.
int bytesOnTheWay(http_t* http);

/// While one exists, the user is being asked, and no request is late.
class WaitForUser {
 public:
  WaitForUser();
  WaitForUser(const WaitForUser&) = delete;
  WaitForUser& operator=(const WaitForUser&) = delete;
  ~WaitForUser();
};

/// When a request may take longer: never, or while the server keeps taking bytes.
enum class Patience { none, whileBytesLeave };

/// While it exists, requests over the connection are cut off when they exceed their bounds.
class Watch {
 public:
  Watch(http_t* http, Bounds& bounds, Patience patience);

 private:
  void enforceBounds(http_t* http, Bounds& bounds, Patience patience, const std::stop_token& stop);

  // Made on the caller's thread, because a lack of memory on the new thread would end the program.
  std::mutex mutex_;
  std::condition_variable_any ended_;
  std::jthread thread_;
};

}  // namespace tandemtrim::host
