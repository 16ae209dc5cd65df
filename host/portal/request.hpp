#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

namespace tandemtrim::host {

/// How a request ends, as portals count it.
enum class Response : unsigned { done = 0, cancelled = 1, failed = 2 };

/// A call of a program that waits for its answer. Until then there is an object at the call's handle, by
/// which the program takes it back.
class Request {
 public:
  /// Takes over the call. `onClose` runs when the program takes it back.
  Request(GDBusMethodInvocation* call, const std::string& handle, std::function<void()> onClose);
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;
  /// Answers that it failed, unless it is answered.
  ~Request();

  /// Whether there is an object at the handle; there is none where another request has it.
  [[nodiscard]] bool isOpen() const { return object_ != 0; }
  /// Answers the call with these results, of the type a{sv} (floating); null is none. Once only.
  void answer(Response response, GVariant* results = nullptr);

 private:
  static void onCall(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                     const char* method, GVariant* values, GDBusMethodInvocation* call, gpointer request);

  // Null once it is answered.
  GDBusMethodInvocation* call_;
  GDBusConnection* const bus_;
  std::function<void()> onClose_;
  unsigned object_ = 0;
};

}  // namespace tandemtrim::host
