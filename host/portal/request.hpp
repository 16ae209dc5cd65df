#pragma once

#include <string>

#include <gio/gio.h>

namespace tandemtrim::host {

/// How a request ends, with the numbers that portals use.
enum class Response : unsigned { done = 0, cancelled = 1, failed = 2 };

/// A program's call that waits for its answer. The program can cancel an unanswered call through the object
/// at its handle.
class Request {
 public:
  /// Takes over the call.
  Request(GDBusMethodInvocation* call, std::string handle);
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  /// Answers that the call failed, unless it is answered already.
  ~Request() { answer(Response::failed); }

  /// Whether it is unanswered and has this handle.
  [[nodiscard]] bool waitsAt(const std::string& handle) const {
    return call_ != nullptr && handle == handle_;
  }
  /// Whether the program with this name on the bus made the call.
  [[nodiscard]] bool isOf(const std::string& sender) const { return sender == sender_; }
  /// Answers the call with these results, a floating a{sv}; null means no results. Only the first answer
  /// counts.
  void answer(Response response, GVariant* results = nullptr);

 private:
  // Null once it is answered.
  GDBusMethodInvocation* call_;
  const std::string handle_;
  const std::string sender_;
};

}  // namespace tandemtrim::host
