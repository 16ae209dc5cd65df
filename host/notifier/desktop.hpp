#pragma once

#include <cstdint>
#include <memory>

#include <gio/gio.h>

#include "host/notifier/order.hpp"

namespace tandemtrim::host {

/// One notification on the user's desktop. A call takes no longer than some seconds.
class DesktopNotification {
 public:
  /// Finds the session's notifications.
  DesktopNotification();
  DesktopNotification(const DesktopNotification&) = delete;
  DesktopNotification& operator=(const DesktopNotification&) = delete;
  ~DesktopNotification() = default;

  /// Shows the text, in the place of what was shown before. False where the session has no notifications, or
  /// they do not answer.
  bool show(const NotificationText& text);

 private:
  struct Unref {
    void operator()(GDBusConnection* bus) const { g_object_unref(bus); }
  };

  std::unique_ptr<GDBusConnection, Unref> bus_;
  bool hasMarkup_ = false;
  // By which the desktop knows what is shown; 0 is nothing.
  std::uint32_t shown_ = 0;
};

}  // namespace tandemtrim::host
