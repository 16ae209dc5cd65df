#pragma once

#include <cstdint>
#include <memory>

#include <gio/gio.h>

#include "host/notifier/order.hpp"

namespace tandemtrim::host {

/// One notification on the user's desktop. Each call waits 10 seconds at most for the desktop's answer.
class DesktopNotification {
 public:
  /// Connects to the session's notification service.
  DesktopNotification();
  DesktopNotification(const DesktopNotification&) = delete;
  DesktopNotification& operator=(const DesktopNotification&) = delete;
  ~DesktopNotification() = default;

  /// Shows the text, replacing the one that was shown before. False when the session has no notification
  /// service, or the service does not answer.
  bool show(const NotificationText& text);

 private:
  struct Unref {
    void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
  };

  std::unique_ptr<GDBusConnection, Unref> bus_;
  bool hasMarkup_ = false;
  // The desktop's number for the notification; 0 before the first.
  std::uint32_t shown_ = 0;
};

}  // namespace tandemtrim::host
