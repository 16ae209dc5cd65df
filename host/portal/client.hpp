#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace tandemtrim::host {

/// Who made a call and, where that is a portal, the program for which it asks; as long as both are on the
/// bus.
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

/// The name on the bus of the program for which a portal asks, by the handle that it gives the request; empty
/// for a handle that names none.
std::string programOf(const std::string& handle);

}  // namespace tandemtrim::host
