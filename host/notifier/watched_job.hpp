#pragma once

#include <optional>

#include "host/notifier/order.hpp"

namespace tandemtrim::host {

/// Watches the job for its time: what is to be said when it ends without being printed; none when it does
/// not, and when nobody can say.
std::optional<NotificationText> badEndOf(const NotifierOrder& order);

}  // namespace tandemtrim::host
