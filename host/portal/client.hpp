#pragma once

#include <functional>

#include <gio/gio.h>

namespace tandemtrim::host {

/// Who made a call, as long as it is on the bus.
class Client {
 public:
  /// `onGone` runs when the caller leaves the bus.
  Client(GDBusMethodInvocation* call, std::function<void()> onGone);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() { g_bus_unwatch_name(watch_); }

 private:
  std::function<void()> onGone_;
  unsigned watch_;
};

}  // namespace tandemtrim::host
