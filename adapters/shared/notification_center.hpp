#pragma once

#include <list>

#include "platform/notifications.hpp"

namespace tandemtrim::platform::memory {

/// The notification centre for controls whose toolkit does not have one.
class NotificationCenter : public platform::NotificationCenter {
 public:
  void addObserver(const void* observer, Selector selector, std::string_view name,
                   NibObject* object) override;
  void removeObserver(const void* observer) override;
  void removeObserver(const void* observer, std::string_view name, NibObject* object) override;

  /// Calls the selectors of all that subscribed to this name from this object, in the order of their
  /// subscriptions. A selector may subscribe and end subscriptions.
  void post(std::string_view name, NibObject* object);

  /// How many subscriptions there are.
  [[nodiscard]] std::size_t subscriptionCount() const;

 private:
  struct Subscription {
    const void* observer;
    Selector selector;
    std::string_view name;
    NibObject* object;
    bool ended = false;
  };
  void dropEnded();

  // A list, since adding to it does not move a subscription that is being called. Ended ones stay until no
  // selector runs.
  std::list<Subscription> subscriptions_;
  int delivering_ = 0;
  bool someEnded_ = false;
};

/// The one that defaultCenter() returns on this platform.
NotificationCenter& notificationCenter();

}  // namespace tandemtrim::platform::memory
