#pragma once

#include <string>

#include <gio/gio.h>

namespace tandemtrim::host {

/// How a request ends, as portals count it.
enum class Response : unsigned { done = 0, cancelled = 1, failed = 2 };

/// A call of a program that waits for its answer. Until then its handle is the object by which the program
/// takes it back.
class Request {
 public:
  /// Takes over the call.
  Request(GDBusMethodInvocation* call, std::string handle);
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  /// Answers that it failed, unless it is answered.
  ~Request() { answer(Response::failed); }

  /// Whether it still waits, and has this handle.
  [[nodiscard]] bool waitsAt(const std::string& handle) const {
    return call_ != nullptr && handle == handle_;
  }
  /// Whether the program with this name on the bus has made it.
  [[nodiscard]] bool isOf(const std::string& sender) const { return sender == sender_; }
  /// Answers the call with these results, of the type a{sv} (floating); null is none. Once only.
  void answer(Response response, GVariant* results = nullptr);

 private:
  // Null once it is answered.
  GDBusMethodInvocation* call_;
  const std::string handle_;
  const std::string sender_;
};

}  // namespace tandemtrim::host
