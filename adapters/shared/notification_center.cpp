#include "adapters/shared/notification_center.hpp"

#include <algorithm>
#include <utility>

namespace tandemtrim::platform {

NotificationCenter& defaultCenter() { return memory::notificationCenter(); }

namespace memory {

NotificationCenter& notificationCenter() {
  static NotificationCenter center;
  return center;
}

void NotificationCenter::addObserver(const void* observer, Selector selector, std::string_view name,
                                     NibObject* object) {
  subscriptions_.push_back({observer, std::move(selector), name, object});
}

void NotificationCenter::removeObserver(const void* observer) {
  for (auto& subscription : subscriptions_) subscription.ended |= subscription.observer == observer;
  someEnded_ = true;
  dropEnded();
}

void NotificationCenter::removeObserver(const void* observer, std::string_view name, NibObject* object) {
  const auto latest =
      std::find_if(subscriptions_.rbegin(), subscriptions_.rend(), [&](const auto& subscription) {
        return subscription.observer == observer && subscription.name == name &&
               subscription.object == object && !subscription.ended;
      });
  if (latest == subscriptions_.rend()) return;
  latest->ended = true;
  someEnded_ = true;
  dropEnded();
}

void NotificationCenter::post(std::string_view name, NibObject* object) {
  struct Delivery {
    NotificationCenter& center;
    ~Delivery() {
      --center.delivering_;
      center.dropEnded();
    }
  };
  ++delivering_;
  const Delivery delivery{*this};
  for (auto& subscription : subscriptions_) {
    if (subscription.object == object && subscription.name == name && !subscription.ended) {
      subscription.selector({name, object});
    }
  }
}

std::size_t NotificationCenter::subscriptionCount() const {
  return static_cast<std::size_t>(std::ranges::count(subscriptions_, false, &Subscription::ended));
}

void NotificationCenter::dropEnded() {
  if (delivering_ > 0 || !someEnded_) return;
  std::erase_if(subscriptions_, [](const auto& subscription) { return subscription.ended; });
  someEnded_ = false;
}

}  // namespace memory
}  // namespace tandemtrim::platform
