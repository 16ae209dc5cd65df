#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace tandemtrim::host {

/// Watches the caller of a request and, if that is a portal, the program for which it calls.
class Client {
 public:
  /// `onGone` runs when one of them leaves the bus, and may run for each.
  Client(GDBusMethodInvocation* call, const std::string& handle, std::function<void()> onGone);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client();

 private:
  std::function<void()> onGone_;
  std::vector<unsigned> watches_;
};

/// The bus name of the program for which a portal calls, from the handle of its request; empty for a handle
/// that names no program.
std::string programOf(const std::string& handle);

}  // namespace tandemtrim::host
