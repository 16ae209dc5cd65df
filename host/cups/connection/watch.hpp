#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

#include <cups/cups.h>

namespace tandemtrim::host {

/// Why an answer is not waited for any longer.
enum class GivenUp { no, tooSlow, tooLarge };

/// What the requests over a connection may take.
class Bounds {
 public:
  /// Each may take so long; all together, a fixed share of memory beyond what the program takes now.
  explicit Bounds(std::chrono::seconds ofEach);

  /// Forgets what has happened, for a new connection.
  void renew();

  const std::chrono::seconds longest;
  /// In kilobytes, of the whole program.
  long mostMemory = 0;
  /// Set when one took more.
  std::atomic<GivenUp> givenUp = GivenUp::no;
};

/// How many bytes wait for the server to take them.
int bytesOnTheWay(http_t* http);

/// While it lives, the user is asked for something, and no request becomes late.
class WaitForUser {
 public:
  WaitForUser();
  WaitForUser(const WaitForUser&) = delete;
  WaitForUser& operator=(const WaitForUser&) = delete;
  ~WaitForUser();
};

/// What a request may take its time for: nothing, or bytes that the server goes on taking.
enum class Patience { none, whileBytesLeave };

/// While it lives, a request is under way, and is cut off when it goes beyond its bounds.
class Watch {
 public:
  Watch(http_t* http, Bounds& bounds, Patience patience);

 private:
  void cutWhatGoesBeyond(http_t* http, Bounds& bounds, Patience patience, const std::stop_token& stop);

  // Made by the thread that asks, because one that finds no memory of its own ends the program.
  std::mutex mutex_;
  std::condition_variable_any ended_;
  std::jthread thread_;
};

}  // namespace tandemtrim::host
