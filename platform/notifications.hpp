#pragma once

#include <functional>
#include <string_view>

#include "platform/controls.hpp"

namespace tandemtrim::platform {

/// Posted by a text box after each edit by the user; changes by the program do not post it.
inline constexpr std::string_view NSControlTextDidChangeNotification = "NSControlTextDidChangeNotification";

struct Notification {
  std::string_view name;
  NibObject* object;
};

/// Delivers notifications to their subscribers, synchronously on the posting thread.
class NotificationCenter {
 public:
  using Selector = std::function<void(const Notification&)>;

  virtual ~NotificationCenter() = default;

  /// Subscribes `selector` to the notifications of this name that `object` posts. Every call adds a
  /// subscription.
  virtual void addObserver(const void* observer, Selector selector, std::string_view name,
                           NibObject* object) = 0;
  /// Ends every subscription of the observer.
  virtual void removeObserver(const void* observer) = 0;
  /// Ends the observer's latest subscription to this name from this object.
  virtual void removeObserver(const void* observer, std::string_view name, NibObject* object) = 0;
};

/// The centre that this platform's controls post to. Each platform defines it.
NotificationCenter& defaultCenter();

}  // namespace tandemtrim::platform
