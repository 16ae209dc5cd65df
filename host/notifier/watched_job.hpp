#pragma once

#include <optional>

#include "host/notifier/order.hpp"

namespace tandemtrim::host {

/// Watches the job for `order.watched`. Returns the notification to show when the job ends without being
/// printed; nullopt if it does not, and if the server cannot be asked.
std::optional<NotificationText> badEndOf(const NotifierOrder& order);

}  // namespace tandemtrim::host
